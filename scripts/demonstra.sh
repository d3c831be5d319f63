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

casa=$(mktemp -d)
filhos=()
limpa() {
    for ((i = ${#filhos[@]} - 1; i >= 0; i--)); do kill "${filhos[i]}" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$casa"
}
trap limpa EXIT
foto() { import -window root "$saida/$1.png" && echo "  $saida/$1.png"; }
desiste() {
    echo "demonstra: $*" >&2
    foto falha || true
    exit 1
}
espera() { # espera SEGUNDOS COMANDO…: until the command succeeds
    local fim=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < fim)) || desiste "esperei em vão: $*"
        sleep 0.1
    done
}

# A display, a window manager and an installation of its own.
export XDG_RUNTIME_DIR=$casa/run HOME=$casa QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY QT_SCALE_FACTOR
mkdir -m 700 "$XDG_RUNTIME_DIR"
cp -a "$raiz/instalacao/windows" "$casa/windows"
export QUOREL_WINDIR=$casa/windows
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$casa/tela" 2>/dev/null &
filhos+=($!)
espera 20 test -s "$casa/tela"
DISPLAY=:$(cat "$casa/tela")
export DISPLAY
openbox 2>/dev/null &
filhos+=($!)
espera 20 xprop -root _NET_SUPPORTING_WM_CHECK

# The windows, by title; the first visible one.
janela() { xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n 1; }
visivel() { [ -n "$(janela "$1")" ]; }
some() { [ -z "$(janela "$1")" ]; }
clica() { # clica JANELA X Y, in pixels of its client area
    xdotool mousemove --window "$1" "$2" "$3" sleep 0.3 click 1
}
tecla() { xdotool key --clearmodifiers "$@"; }

echo "Visita de um aluno ao nível F1:"
"$raiz/bin/quorel" /NIVEL:F1 >"$casa/quorel.log" 2>&1 &
quorel=$!
filhos+=("$quorel")
espera 30 visivel 'Série: Fundamental I'
