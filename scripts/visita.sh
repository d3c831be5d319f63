# What a visit on a virtual display is made of, for the scripts that play one. They set saida, the directory of the
# pictures, add the programs that they start to feitos, and may give conta_falha, which tells of a visit that failed.
# shellcheck shell=bash

feitos=()
fecha_tudo() {
    local i
    for ((i = ${#feitos[@]} - 1; i >= 0; i--)); do kill "${feitos[i]}" 2>/dev/null || true; done
    wait 2>/dev/null || true
}

foto() { import -window root "$saida/$1.png" && echo "  $saida/$1.png"; }
desiste() {
    echo "$(basename "$0"): $*" >&2
    echo "  janelas à vista:" >&2
    xdotool search --onlyvisible --name . 2>/dev/null |
        while read -r id; do echo "    $(xdotool getwindowname "$id")" >&2; done || true
    declare -F conta_falha >/dev/null && conta_falha >&2
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

abre_tela() { # abre_tela PASTA: a display and a window manager; what they need lies in the folder
    Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset 3>"$1/tela" 2>/dev/null &
    feitos+=($!)
    espera 20 test -s "$1/tela"
    DISPLAY=:$(cat "$1/tela")
    export DISPLAY
    openbox >/dev/null 2>&1 &
    feitos+=($!)
    # Its window tells that it manages: xprop alone also succeeds when there is none yet.
    espera 20 eval "xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'"
}

# The windows, by title; the first visible one.
janela() { xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n 1; }
visivel() { [ -n "$(janela "$1")" ]; }
some() { [ -z "$(janela "$1")" ]; }
clica() { # clica JANELA X Y, in pixels of its client area
    xdotool mousemove --window "$1" "$2" "$3" sleep 0.3 click 1
}
tecla() { xdotool key --clearmodifiers "$@"; }

retrato() { import -window "$1" -depth 8 rgb:- | md5sum; }
parada() { # parada JANELA: until it has stopped changing
    local antes agora
    agora=$(retrato "$1")
    for ((;;)); do
        sleep 0.2
        antes=$agora
        agora=$(retrato "$1")
        [ "$antes" != "$agora" ] || break
    done
}

abre_roteiro() { # from F1's main window, principal, to the first lesson of Português; sets blocos and aula
    local titulo='Série: Fundamental I'
    clica "$principal" 264 105 # the block Português
    espera 20 eval "[ \"\$(janela '$titulo')\" != $principal ] && visivel '$titulo'"
    blocos=$(janela "$titulo")
    xdotool mousemove --window "$blocos" 190 78 # the second picture, the first with exercises
    sleep 1.5 # its tip comes with the next tick
    foto 2-roteiros
    clica "$blocos" 190 78
    espera 60 visivel 'Zeto - Quorel'
    aula=$(janela 'Zeto - Quorel')
}

outra() { # outra COMANDO…: does it and waits for the lesson that it leads to
    parada "$aula"
    local antes
    antes=$(retrato "$aula")
    "$@"
    espera 20 eval "[ \"\$(retrato $aula)\" != \"$antes\" ]"
    parada "$aula"
}
botao() { # botao DA-DIREITA: clicks a button of the lesson's lower edge
    eval "$(xdotool getwindowgeometry --shell "$aula" | grep -E '^(WIDTH|HEIGHT)=')"
    clica "$aula" $((WIDTH - $1)) $((HEIGHT - 42))
}
proxima() { botao 62; }
anterior() { botao 357; }

faz_roteiro() { # the four lessons, one of them twice, and back to the pictures
    parada "$aula"
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
    proxima # past the last Aula the lesson's program hides
    espera 20 some 'Zeto - Quorel'
    foto 12-de-volta-aos-roteiros
    volta_as_disciplinas
}

volta_as_disciplinas() { # from the pictures
    clica "$blocos" 504 16
    espera 20 eval "[ \"\$(janela 'Série: Fundamental I')\" = $principal ]"
}

ultima_linha() { # ultima_linha CADASTRO
    python3 - "$1" <<'P'
import sqlite3, sys
linha = sqlite3.connect(sys.argv[1]).execute("SELECT LG_Aluno, LG_Classe, RO_Cod, LG_Data, LG_Resp FROM LG_LogAulas "
                                             "ORDER BY LG_Id DESC LIMIT 1").fetchone()
if linha:
    print("  aluno {}, classe {}, roteiro {}, {}\n  {}".format(*linha))
P
}
confere_linha() { # confere_linha CADASTRO: shows the row that faz_roteiro leaves, and keeps it in saida/linha.txt
    echo "Linha do registro das aulas (LG_LogAulas):"
    ultima_linha "$1" | tee "$saida/linha.txt"
    grep -q 'Português<disc>As letras do meu nome<rot>A:E:A:.*A:$' "$saida/linha.txt" || desiste "o registro não é o esperado"
}
