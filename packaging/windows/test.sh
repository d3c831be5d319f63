#!/bin/bash
# Installs the program under Wine on a virtual display, starts it by its start-menu entry and plays a pupil's visit with
# real mouse and key events: block, picture, a Roteiro from its first to its last Aula with one step back, the end of
# the program. Checks the row that was logged. Installs again, while the program runs and over what a school has written,
# and in a place of another name; starts the unpacked folder; uninstalls, and checks that what the school wrote stayed.
# Leaves a picture of each station in build/windows/saida. Run build.sh first.
set -euo pipefail
cd "$(dirname "$0")/../.."
aqui=packaging/windows
. "$aqui/ambiente.sh"
scripts/instala.sh janelas testa_janelas
instalador=$PWD/build/windows/pacote/quorel-windows-instala.exe
[ -n "${QUOREL_NA_TELA:-}" ] || QUOREL_NA_TELA=1 exec "$aqui/tela.sh" "$aqui/test.sh"
[ -f "$instalador" ] || { echo "falta $instalador: rode antes $aqui/build.sh" >&2; exit 2; }
saida=$PWD/build/windows/saida
rm -rf "$saida"
mkdir -p "$saida"
quorel_wine

trap 'wineserver -k 2>/dev/null || true' EXIT
. scripts/visita.sh

casa=$WINEPREFIX/drive_c/ProgramData/Quorel
menu="$WINEPREFIX/drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs/Quorel"
lista='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorel'
rm -rf "$casa" "$menu"
wine reg delete "$lista" /f >/dev/null 2>&1 || true # what a visit that failed has left
echo "Instalação silenciosa:"
wine "$instalador" /S
espera 60 test -f "$casa/desinstala.exe"
for arquivo in QUOREL2001/exe/{quorel,Zeto,Desenho,Desenhos,Vrel,Livros,Calc,quorel-blocos,quorel-cadastro}.exe \
    Cadastros.mdb zeto_cnf.txt licencas/LGPL-3 QUOREL2001/exe/translations/qtbase_pt_BR.qm; do
    [ -s "$casa/$arquivo" ] || desiste "o instalador não deixou $arquivo"
done
[ "$(ls "$menu" | wc -l)" = "$(ls "$casa/QUOREL2001/DBBLOCOS" | grep -c '^[FI][1-4]$')" ] || desiste "menu: $(ls "$menu")"
wine reg query 'HKLM\SYSTEM\CurrentControlSet\Control\Session Manager\Environment' /v QUOREL_WINDIR |
    grep -qi 'ProgramData.Quorel' || desiste "QUOREL_WINDIR não ficou na máquina"
wineserver -w # programs started from now on know it

echo "Visita de um aluno ao nível F1:"
wine start 'C:\ProgramData\Microsoft\Windows\Start Menu\Programs\Quorel\Quorel - Fundamental I.lnk' 2>/dev/null
espera 60 visivel 'Série: Fundamental I'
principal=$(janela 'Série: Fundamental I')
sleep 1
foto 1-disciplinas
abre_roteiro
faz_roteiro

clica "$principal" 200 400
tecla alt+F4
espera 30 eval '! pgrep -f "[Q]UOREL2001.exe.(quorel|Zeto)"' # MSG_SAI has ended the child, too

confere_linha "$casa/Cadastros.mdb"

fecha() {
    clica "$(janela 'Série: Fundamental I')" 200 400
    tecla alt+F4
    espera 30 eval '! pgrep -f "[Q]UOREL2001.exe.(quorel|Zeto)"'
}
recusa() { # recusa COMANDO…: it says by its exit code that it was not done
    local codigo=0
    "$@" || codigo=$?
    [ "$codigo" = 2 ] || desiste "terminou com $codigo: $*"
}
arvore() { (cd "$casa" && find . -type f -printf '%P %s %T@\n' | sort | md5sum); }
digita() { # digita LINHA LUGAR: as a user would type it, with %LUGAR%; Wine quotes what is given to a program directly
    printf '@%s\r\n' "$1" >"$WINEPREFIX/drive_c/linha.bat"
    LUGAR=$2 wine cmd /c 'C:\linha.bat' >/dev/null
}

echo "Um usuário com acentos no nome:"
wineserver -w
USER=Conceição LOGNAME=Conceição wine start 'C:\ProgramData\Quorel\QUOREL2001\exe\quorel.exe' /NIVEL:F1 \
    '/CFG:C:\ProgramData\Quorel\zeto_cnf.txt' 2>/dev/null
espera 60 visivel 'Série: Fundamental I'
sleep 1
foto 13-usuario-com-acentos

echo "Com o programa em uso nada se instala nem se desinstala:"
antes=$(arvore)
recusa wine "$instalador" /S
recusa wine "$casa/desinstala.exe" /S '_?=C:\ProgramData\Quorel'
[ "$(arvore)" = "$antes" ] || desiste "mesmo assim mexeu na instalação"
fecha

echo "Segunda instalação, sobre o trabalho da escola:"
quorel=$casa/QUOREL2001
declare -A trabalho=(
    ["$quorel/DBBLOCOS/F1/0526POF1.edb"]="bloco novo" ["$quorel/DBBLOCOS/F1/0226POF1.edb"]="bloco mudado"
    ["$quorel/Arqs/quintal.htm"]="lição nova" ["$quorel/zeto_mm/Fig/Q/T/QUINTAL.GIF"]="figura nova"
    ["$quorel/exe/Livros.exe"]="o programa da escola" ["$quorel/RotSelec.cfg"]="a lista do professor")
for arquivo in "${!trabalho[@]}"; do
    mkdir -p "${arquivo%/*}"
    echo "${trabalho[$arquivo]}" >"$arquivo"
done
printf 'MM_ALT=D:\\outra\r\n' >>"$casa/zeto_cnf.txt"
trabalho_ficou() {
    for arquivo in "${!trabalho[@]}"; do
        [ "$(cat "$arquivo")" = "${trabalho[$arquivo]}" ] || desiste "$1: $arquivo se perdeu"
    done
    grep -q MM_ALT "$casa/zeto_cnf.txt" || desiste "$1: a configuração mudada se perdeu"
    [ "$(ultima_linha "$casa/Cadastros.mdb")" = "$(cat "$saida/linha.txt")" ] || desiste "$1: mexeu no cadastro"
}
echo velho >"$quorel/exe/quorel-blocos.exe"
rm "$quorel/Arqs/agua.htm"
wine "$instalador" /S
[ -s "$quorel/Arqs/agua.htm" ] && ! grep -qx velho "$quorel/exe/quorel-blocos.exe" || desiste "não instalou de novo"
trabalho_ficou "a segunda instalação"

echo "Desinstalação silenciosa:"
wine "$casa/desinstala.exe" /S
espera 60 test ! -e "$quorel/exe/quorel.exe"
espera 60 test ! -e "$menu"
wineserver -w
trabalho_ficou "a desinstalação"
echo "  ficou:"
(cd "$casa" && find . -type f | sed 's/^/    /')
[ "$(find "$casa" -type f | wc -l)" = $((${#trabalho[@]} + 2)) ] || desiste "ficou mais do que o trabalho da escola"
ambiente='HKLM\SYSTEM\CurrentControlSet\Control\Session Manager\Environment'
! wine reg query "$ambiente" /v QUOREL_WINDIR >/dev/null || desiste "QUOREL_WINDIR ficou na máquina"
! wine reg query "$lista" >/dev/null || desiste "o programa ficou na lista dos instalados"

echo "Outro lugar, com acentos e espaços:"
outro='C:\Escola São José\Lições'
casa=$WINEPREFIX/drive_c/${outro#C:\\}
casa=${casa//\\//}
quorel=$casa/QUOREL2001
rm -rf "$casa"
digita "\"$(winepath_de "$instalador")\" /S /D=%LUGAR%" "$outro"
espera 60 test -f "$casa/desinstala.exe"
wineserver -w
wine "$instalador" /S # a new version goes where the program is
[ "$(ls "$WINEPREFIX/drive_c/ProgramData/Quorel" | grep -c exe)" = 0 ] || desiste "instalou de novo em outro lugar"
iconv -f CP1252 "$casa/zeto_cnf.txt" | grep -qxF "DIRQUOREL=$outro\\QUOREL2001"$'\r' || desiste "a configuração não aponta para $outro"
wineserver -w
wine start 'C:\ProgramData\Microsoft\Windows\Start Menu\Programs\Quorel\Quorel - Fundamental I.lnk' 2>/dev/null
espera 60 visivel 'Série: Fundamental I'
sleep 1
foto 14-outro-lugar
fecha
wine "$casa/desinstala.exe" /S
espera 60 test ! -e "$quorel"
[ "$(ls "$casa")" = Cadastros.mdb ] || desiste "ficou: $(ls "$casa")"
rm -rf "$casa" "$WINEPREFIX/drive_c/ProgramData/Quorel"

echo "A pasta, sem instalação:"
casa="$WINEPREFIX/drive_c/Lições (cópia) & avó"
rm -rf "$casa"
mkdir "$casa"
python3 -c 'import sys, zipfile; zipfile.ZipFile(sys.argv[1]).extractall(sys.argv[2])' \
    "${instalador%/*}/quorel-windows.zip" "$casa"
wineserver -w
digita 'start "" "%LUGAR%\Quorel\Quorel - Fundamental I.cmd"' 'C:\Lições (cópia) & avó'
espera 60 visivel 'Série: Fundamental I'
principal=$(janela 'Série: Fundamental I')
sleep 1
foto 15-pasta
saida=$(mktemp -d) # its other pictures are there already
abre_roteiro # the lesson's program is found there, too
wineserver -k
rm -rf "$casa"
rm -rf "$saida"
echo "Pronto: as imagens estão em build/windows/saida"
