#!/bin/bash
# Builds the Windows program, its package and its tests, and runs all of them under Wine, where Qt for Windows is at
# hand: in the cache, or as an archive to unpack. Building Qt anew takes an hour, so without either nothing is built,
# which is said.
set -euo pipefail
cd "$(dirname "$0")/../.."
aqui=packaging/windows
. "$aqui/ambiente.sh"
arquivo=$QUOREL_QT_ARQUIVO
if [ ! -f "$QUOREL_QT_WINDOWS/bin/Qt6Widgets.dll" ] && [ ! -f "$arquivo" ]; then
    echo "ATENÇÃO: o programa para Windows NÃO foi construído nem testado: não há Qt para Windows em" \
        "$QUOREL_QT_WINDOWS nem em $arquivo ($aqui/qt.sh constrói o Qt, em uma hora)."
    exit 0
fi
scripts/instala.sh janelas testa_janelas
"$aqui/build.sh"
cmake --build --preset windows
# One display for all: Wine's own programs then start once. Wine may hold a program up once, on a machine that is busy;
# what fails twice is a fault of ours. What passed at the second try is told in the last lines.
saida=build/windows/ci-testes.txt
"$aqui/tela.sh" ctest --preset windows --repeat until-pass:2 | tee "$saida"
sed -nE 's/.*Test +#[0-9]+: ([^ ]+) .*(\*\*\*.*)/REPETIDO: \1 só passou na segunda vez (na primeira: \2)/p' "$saida"
