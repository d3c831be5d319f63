#!/bin/bash
# Plays a pupil's visit on a virtual display with real mouse and key events: month, block, picture, a lesson answered
# from Aula to Aula with one step back, the end of the Roteiro, the end of the program. Leaves a picture of each
# station and what was logged.
#   scripts/demonstra.sh BUILD-DIR OUTPUT-DIR
set -euo pipefail
raiz=$1
mkdir -p "$2"
saida=$(cd "$2" && pwd)
rm -f "$saida"/*.png "$saida"/linha.txt

casa=$(mktemp -d)
filhos=()
limpa() {
    for ((i = ${#filhos[@]} - 1; i >= 0; i--)); do kill "${filhos[i]}" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$casa"
}
trap limpa EXIT
export XDG_RUNTIME_DIR=$casa/run
mkdir -m 700 "$XDG_RUNTIME_DIR"
unset WAYLAND_DISPLAY

exec {tela}<> <(:)
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$casa/tela" 2>/dev/null &
filhos+=($!)
espera() { # espera SEGUNDOS COMANDO…: until the command succeeds
    local fim=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < fim)) || { echo "demonstra: esperei em vão: $*" >&2; foto falha; exit 1; }
        sleep 0.1
    done
}
foto() {
    import -window root "$saida/$1.png" 2>/dev/null && echo "  $saida/$1.png"
}
espera 10 test -s "$casa/tela"
DISPLAY=:$(cat "$casa/tela")
export DISPLAY
openbox --config-file /dev/null 2>/dev/null &
filhos+=($!)
sleep 0.5

