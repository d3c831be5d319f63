#!/bin/bash
# Installs the program under Wine on a virtual display, starts it by its start-menu entry and plays a pupil's visit with
# real mouse and key events: block, picture, a Roteiro from its first to its last Aula with one step back, the end of
# the program. Checks the row that was logged, uninstalls, and checks that the register stayed. Leaves a picture of
# each station in build/windows/saida. Run build.sh first.
set -euo pipefail
cd "$(dirname "$0")/../.."
aqui=packaging/windows
. "$aqui/ambiente.sh"
"$aqui/pacotes.sh" testa
instalador=$PWD/build/windows/pacote/quorel-windows-instala.exe
[ -n "${QUOREL_NA_TELA:-}" ] || QUOREL_NA_TELA=1 exec "$aqui/tela.sh" "$aqui/test.sh"
[ -f "$instalador" ] || { echo "falta $instalador: rode antes $aqui/build.sh" >&2; exit 2; }
saida=$PWD/build/windows/saida
rm -rf "$saida"
mkdir -p "$saida"
quorel_wine

trap 'wineserver -k 2>/dev/null || true' EXIT
foto() { import -window root "$saida/$1.png" && echo "  $saida/$1.png"; }
desiste() {
    echo "test.sh: $*" >&2
    foto falha || true
    exit 1
}
espera() { # espera SEGUNDOS COMANDO…: until the command succeeds
    local fim=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < fim)) || desiste "esperei em vão: $*"
        sleep 0.2
    done
}

casa=$WINEPREFIX/drive_c/ProgramData/Quorel
menu="$WINEPREFIX/drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs/Quorel"
rm -rf "$casa" "$menu"
echo "Instalação silenciosa:"
wine "$instalador" /S
espera 60 test -f "$casa/desinstala.exe"
for arquivo in QUOREL2001/exe/{quorel,Zeto,Desenho,Desenhos,Vrel,Livros,Calc,quorel-blocos,quorel-cadastro}.exe \
    Cadastros.mdb zeto_cnf.txt licencas/LGPL-3; do
    [ -s "$casa/$arquivo" ] || desiste "o instalador não deixou $arquivo"
done
[ "$(ls "$menu" | wc -l)" = "$(ls "$casa/QUOREL2001/DBBLOCOS" | grep -c '^[FI][1-4]$')" ] || desiste "menu: $(ls "$menu")"
wine reg query 'HKLM\SYSTEM\CurrentControlSet\Control\Session Manager\Environment' /v QUOREL_WINDIR |
    grep -qi 'ProgramData.Quorel' || desiste "QUOREL_WINDIR não ficou na máquina"
wineserver -w # programs started from now on know it

# The windows, by title; the first visible one.
janela() { xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n 1; }
visivel() { [ -n "$(janela "$1")" ]; }
some() { [ -z "$(janela "$1")" ]; }
clica() { # clica JANELA X Y, in pixels of its client area
    xdotool mousemove --window "$1" "$2" "$3" sleep 0.3 click 1
}
tecla() { xdotool key --clearmodifiers "$@"; }

echo "Visita de um aluno ao nível F1:"
wine start 'C:\ProgramData\Microsoft\Windows\Start Menu\Programs\Quorel\Quorel - Fundamental I.lnk' 2>/dev/null
espera 60 visivel 'Série: Fundamental I'
sleep 1
foto 1-disciplinas
principal=$(janela 'Série: Fundamental I')
clica "$principal" 264 105 # the block Português
espera 20 eval '[ "$(janela "Série: Fundamental I")" != "$principal" ] && visivel "Série: Fundamental I"'
blocos=$(janela 'Série: Fundamental I')
xdotool mousemove --window "$blocos" 58 78 # the first picture
sleep 2                                    # its tip comes with the next tick
foto 2-roteiros
clica "$blocos" 58 78
espera 60 visivel 'Zeto - Quorel'
aula=$(janela 'Zeto - Quorel')

retrato() { import -window "$aula" -depth 8 rgb:- | md5sum; }
parada() { # until the lesson's window has stopped changing
    local antes agora
    agora=$(retrato)
    for ((;;)); do
        sleep 0.3
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
proxima # past the last Aula: "ESCONDE" comes and the program hides
espera 20 some 'Zeto - Quorel'
foto 12-de-volta-aos-roteiros

clica "$blocos" 504 16 # back to the disciplines
espera 20 eval '[ "$(janela "Série: Fundamental I")" = "$principal" ]'
clica "$principal" 200 400
tecla alt+F4
espera 30 eval '! pgrep -f "[Q]UOREL2001.exe.(quorel|Zeto)"' # MSG_SAI has ended the child, too

linha() {
    python3 - "$casa/Cadastros.mdb" <<'P'
import sqlite3, sys
linhas = sqlite3.connect(sys.argv[1]).execute("SELECT LG_Aluno, LG_Classe, RO_Cod, LG_Resp, LG_Data FROM LG_LogAulas "
                                              "ORDER BY LG_Id").fetchall()
for aluno, classe, roteiro, respostas, data in linhas[-1:]:
    print(f"  aluno {aluno}, classe {classe}, roteiro {roteiro}, {data}\n  {respostas}")
P
}
echo "Linha do registro das aulas (LG_LogAulas):"
linha | tee "$saida/linha.txt"
grep -q 'Português<disc>As letras do meu nome<rot>A:E:A:.*A:$' "$saida/linha.txt" || desiste "o registro não é o esperado"

echo "Desinstalação silenciosa:"
wine "$casa/desinstala.exe" /S
espera 60 test ! -e "$casa/QUOREL2001/exe"
espera 60 test ! -e "$menu"
wineserver -w
[ "$(linha)" = "$(cat "$saida/linha.txt")" ] || desiste "a desinstalação mexeu no cadastro"
echo "  ficou: $(ls "$casa")"
echo "Pronto: as imagens estão em $saida"
