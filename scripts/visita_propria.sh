# A visit to a sample installation of its own, on a display of its own; both go with the script that reads this:
#   . scripts/visita_propria.sh BUILD-DIR OUTPUT-DIR
# shellcheck shell=bash
set -euo pipefail
raiz=$1
mkdir -p "$2"
saida=$(cd "$2" && pwd)
. "$(dirname "${BASH_SOURCE[0]}")/visita.sh"

casa=$(mktemp -d)
trap 'fecha_tudo; rm -rf "$casa"' EXIT
conta_falha() {
    cat "$casa/quorel.log" 2>/dev/null || true
    kill -0 "${quorel:-}" 2>/dev/null || echo "  o programa não está mais aí"
}

export XDG_RUNTIME_DIR=$casa/run HOME=$casa QT_QPA_PLATFORM=xcb SPEECHD_ADDRESS=unix_socket:$casa/voz # no voice
unset WAYLAND_DISPLAY QT_SCALE_FACTOR
mkdir -m 700 "$XDG_RUNTIME_DIR"
cp -a "$raiz/instalacao/windows" "$casa/windows"
export QUOREL_WINDIR=$casa/windows
abre_tela "$casa"

abre() { # abre COMANDO…: starts the shell and waits for its first window; sets principal
    "$@" >"$casa/quorel.log" 2>&1 &
    quorel=$!
    feitos+=("$quorel")
    espera 30 visivel 'Série: Fundamental I'
    principal=$(janela 'Série: Fundamental I')
}
fecha() { # closes the first window, which ends the program and its children, as it should without a word
    xdotool windowactivate --sync "$principal"
    tecla alt+F4
    espera 20 eval "! kill -0 $quorel"
    espera 20 eval '! pgrep -f "$QUOREL_WINDIR"'
    [ ! -s "$casa/quorel.log" ] || desiste "o programa reclamou"
}
