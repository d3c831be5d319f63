#!/bin/bash
# Installs the program under Wine on a virtual display, starts it by its start-menu entry and plays a pupil's visit with
# real mouse and key events: block, picture, a Roteiro from its first to its last Aula with one step back, the end of
# the program. Checks the row that was logged, uninstalls, and checks that the register stayed. Leaves a picture of
# each station in build/windows/saida. Run build.sh first.
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
rm -rf "$casa" "$menu"
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

echo "Um usuário com acentos no nome:"
wineserver -w
USER=Conceição LOGNAME=Conceição wine start 'C:\ProgramData\Quorel\QUOREL2001\exe\quorel.exe' /NIVEL:F1 \
    '/CFG:C:\ProgramData\Quorel\zeto_cnf.txt' 2>/dev/null
espera 60 visivel 'Série: Fundamental I'
sleep 1
foto 13-usuario-com-acentos
clica "$(janela 'Série: Fundamental I')" 200 400
tecla alt+F4
espera 30 eval '! pgrep -f "[Q]UOREL2001.exe.quorel"'

echo "Desinstalação silenciosa:"
wine "$casa/desinstala.exe" /S
espera 60 test ! -e "$casa/QUOREL2001/exe"
espera 60 test ! -e "$menu"
wineserver -w
[ "$(ultima_linha "$casa/Cadastros.mdb")" = "$(cat "$saida/linha.txt")" ] || desiste "a desinstalação mexeu no cadastro"
echo "  ficou: $(ls "$casa")"
echo "Pronto: as imagens estão em $saida"
