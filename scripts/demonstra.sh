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
faz_roteiro
fecha
confere_linha "$QUOREL_WINDIR/Cadastros.mdb"
echo "Pronto: as imagens estão em $saida"
