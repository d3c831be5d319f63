#!/bin/bash
# Plays a pupil's visit on a virtual display with real mouse and key events: month, block, picture, a lesson answered
# from Aula to Aula with one step back, the end of the Roteiro, the end of the program. Leaves a picture of each
# station and the row that was logged. Fails when a station is not reached.
#   scripts/demonstra.sh BUILD-DIR OUTPUT-DIR
set -euo pipefail
raiz=$1
mkdir -p "$2"
saida=$(cd "$2" && pwd)
rm -f "$saida"/*.png "$saida"/linha.txt
. "$(dirname "$0")/visita.sh"

casa=$(mktemp -d)
trap 'fecha_tudo; rm -rf "$casa"' EXIT
conta_falha() {
    cat "$casa/quorel.log" 2>/dev/null || true
    kill -0 "${quorel:-}" 2>/dev/null || echo "  o programa não está mais aí"
}

# A display, a window manager and an installation of its own.
export XDG_RUNTIME_DIR=$casa/run HOME=$casa QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY QT_SCALE_FACTOR
mkdir -m 700 "$XDG_RUNTIME_DIR"
cp -a "$raiz/instalacao/windows" "$casa/windows"
export QUOREL_WINDIR=$casa/windows
abre_tela "$casa"

echo "Visita de um aluno ao nível F1:"
"$raiz/bin/quorel" /NIVEL:F1 >"$casa/quorel.log" 2>&1 &
quorel=$!
feitos+=("$quorel")
espera 30 visivel 'Série: Fundamental I'
foto 1-disciplinas
abre_roteiro
xdotool windowactivate --sync "$aula"
faz_roteiro

xdotool windowactivate --sync "$principal"
tecla alt+F4
espera 20 eval "! kill -0 $quorel"
espera 20 eval '! pgrep -f "$QUOREL_WINDIR"'
[ ! -s "$casa/quorel.log" ] || desiste "o programa reclamou"
confere_linha "$QUOREL_WINDIR/Cadastros.mdb"
echo "Pronto: as imagens estão em $saida"
