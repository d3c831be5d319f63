#!/bin/bash
# Plays a pupil's visit on a virtual display with real mouse and key events: month, block, picture, a lesson answered
# from Aula to Aula with one step back, the end of the Roteiro, the end of the program. Leaves a picture of each
# station and the row that was logged. Fails when a station is not reached.
#   scripts/demonstra.sh BUILD-DIR OUTPUT-DIR
. "$(dirname "$0")/visita_propria.sh" "$@"
rm -f "$saida"/*.png "$saida"/linha.txt

echo "Visita de um aluno ao nível F1:"
abre "$raiz/bin/quorel" /NIVEL:F1
foto 1-disciplinas
abre_roteiro
xdotool windowactivate --sync "$aula"
onde() { xdotool getwindowgeometry "$aula" | grep -o 'Position: [0-9,]*'; }
antes=$(onde)
xdotool windowmove "$aula" 10 40
espera 20 eval '[ "$(onde)" != "$antes" ]'
posta=$(onde)
faz_roteiro
confere_linha "$QUOREL_WINDIR/Cadastros.mdb"
abre_roteiro # once more: a window that was moved stays where it was put
parada "$aula"
[ "$(onde)" = "$posta" ] || desiste "a janela da lição voltou em outro lugar: $(onde), não $posta"
# Another program holds the register while the lesson is left: the row waits, and the helper brings it in later.
linhas() { python3 -c 'import sqlite3, sys; print(*sqlite3.connect(sys.argv[1]).execute("SELECT count(*) FROM LG_LogAulas").fetchone())' "$QUOREL_WINDIR/Cadastros.mdb"; }
havia=$(linhas)
exec {trava}> >(exec python3 -c 'import sqlite3, sys
c = sqlite3.connect(sys.argv[1], isolation_level=None)
c.execute("BEGIN EXCLUSIVE")
open(sys.argv[2], "w").write("sim")
sys.stdin.read()' "$QUOREL_WINDIR/Cadastros.mdb" "$casa/trancado")
espera 20 test -s "$casa/trancado"
xdotool windowactivate --sync "$aula"
tecla alt+F4
espera 20 some 'Zeto - Quorel'
exec {trava}>&-
espera 60 eval '[ "$(linhas)" = "$((havia + 1))" ]'
echo "A linha que esperou pelo registro chegou a ele."
volta_as_disciplinas
fecha
echo "Pronto: as imagens estão em $saida"
