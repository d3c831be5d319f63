#!/bin/bash
# Makes the pictures of docs/telas anew, from two visits on the sample installation: scripts/telas.sh BUILD-DIR
set -euo pipefail
cd "$(dirname "$0")/.."
fotos=$(mktemp -d)
trap 'rm -rf "$fotos"' EXIT
scripts/demonstra.sh "$1" "$fotos"
scripts/demonstra_professor.sh "$1" "$fotos"
mkdir -p docs/telas
recorta() { convert "$fotos/$1.png" -bordercolor black -border 1 -fuzz 1% -trim +repage -strip +dither -treedepth 7 -colors 255 "docs/telas/$2.png"; }
recorta 1-disciplinas principal
recorta 2-roteiros roteiros
recorta 4-aula-1-certa aula
recorta 11-fim-do-roteiro fim-do-roteiro
for tela in internet cadastro-selecao senha cadastro-alunos cadastro-classes desempenho-grafico desempenho-planilha \
    desempenho-pagina; do
    recorta "$tela" "$tela"
done
