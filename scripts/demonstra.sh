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
    cat "$casa"/*.log >&2 2>/dev/null || true
    if [ -n "${quorel:-}" ]; then
        if kill -0 "$quorel" 2>/dev/null; then
            echo "  o programa vive ($(cat "/proc/$quorel/wchan" 2>/dev/null))" >&2
        else
            wait "$quorel" && echo "  o programa terminou" >&2 || echo "  o programa terminou com $?" >&2
        fi
        echo "  janelas à vista:" >&2
        xdotool search --onlyvisible --name '.' 2>/dev/null |
            while read -r id; do echo "    $(xdotool getwindowname "$id")" >&2; done || true
    fi
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
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset 3>"$casa/tela" 2>/dev/null &
filhos+=($!)
espera 20 test -s "$casa/tela"
DISPLAY=:$(cat "$casa/tela")
export DISPLAY
openbox >/dev/null 2>&1 &
filhos+=($!)
# Its window tells that it manages: xprop alone also succeeds when there is none yet.
espera 20 eval "xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'"

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
foto 1-disciplinas
principal=$(janela 'Série: Fundamental I')
clica "$principal" 264 105 # the block Português
espera 10 eval '[ "$(janela "Série: Fundamental I")" != "$principal" ] && visivel "Série: Fundamental I"'
blocos=$(janela 'Série: Fundamental I')
xdotool mousemove --window "$blocos" 58 78 # the first picture
sleep 1.5                                  # its tip comes with the next tick
foto 2-roteiros
clica "$blocos" 58 78
espera 30 visivel 'Zeto - Quorel'
aula=$(janela 'Zeto - Quorel')

retrato() { import -window "$aula" -depth 8 rgb:- | md5sum; }
parada() { # until the lesson's window has stopped changing
    local antes agora
    agora=$(retrato)
    for ((;;)); do
        sleep 0.2
        antes=$agora
        agora=$(retrato)
        [ "$antes" != "$agora" ] || break
    done
}
outra() { # outra COMANDO…: does it and waits for the lesson that it leads to
    parada
    local antes
    antes=$(retrato)
    "$@"
    espera 20 eval "[ \"\$(retrato)\" != \"$antes\" ]"
    parada
}
botao() { # botao DA-DIREITA: clicks a button of the lesson's lower edge
    eval "$(xdotool getwindowgeometry --shell "$aula" | grep -E '^(WIDTH|HEIGHT)=')"
    clica "$aula" $((WIDTH - $1)) $((HEIGHT - 42))
}
proxima() { botao 62; }
anterior() { botao 357; }

xdotool windowactivate --sync "$aula"
parada
foto 3-aula-1
outra tecla 2
outra tecla Return
foto 4-aula-1-certa
outra proxima
foto 5-aula-2
outra anterior
foto 6-de-volta-na-1
outra tecla 1
outra tecla Return
foto 7-aula-1-errada
outra proxima
tecla 1 3 5 6
outra tecla Return
foto 8-aula-2-certa
outra proxima
foto 9-aula-3
outra proxima
tecla a
outra tecla Return
foto 10-aula-4
outra proxima
foto 11-fim-do-roteiro
proxima # past the last Aula: the program hides
espera 20 some 'Zeto - Quorel'
foto 12-de-volta-aos-roteiros

clica "$blocos" 504 16 # back to the disciplines
espera 10 eval '[ "$(janela "Série: Fundamental I")" = "$principal" ]'
xdotool windowactivate --sync "$principal"
tecla alt+F4
espera 20 eval "! kill -0 $quorel"
espera 20 eval '! pgrep -f "$QUOREL_WINDIR"'
[ ! -s "$casa/quorel.log" ] || { cat "$casa/quorel.log" >&2; desiste "o programa reclamou"; }

echo "Linha do registro das aulas (LG_LogAulas):"
python3 - "$QUOREL_WINDIR/Cadastros.mdb" <<'P' | tee "$saida/linha.txt"
import sqlite3, sys
linhas = sqlite3.connect(sys.argv[1]).execute("SELECT LG_Aluno, LG_Classe, RO_Cod, LG_Resp, LG_Data FROM LG_LogAulas "
                                              "ORDER BY LG_Id").fetchall()
for aluno, classe, roteiro, respostas, data in linhas[-1:]:
    print(f"  aluno {aluno}, classe {classe}, roteiro {roteiro}, {data}\n  {respostas}")
P
grep -q 'Português<disc>As letras do meu nome<rot>A:E:A:.*A:$' "$saida/linha.txt" || desiste "o registro não é o esperado"
echo "Pronto: as imagens estão em $saida"
