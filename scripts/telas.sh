#!/bin/bash
# Makes the pictures of docs/telas anew, from a visit on the sample installation: scripts/telas.sh BUILD-DIR
set -euo pipefail
cd "$(dirname "$0")/.."
fotos=$(mktemp -d)
trap 'rm -rf "$fotos"' EXIT
scripts/demonstra.sh "$1" "$fotos"
mkdir -p docs/telas
recorta() { convert "$fotos/$1.png" -bordercolor black -border 1 -fuzz 1% -trim +repage -strip -colors 255 "docs/telas/$2.png"; }
recorta 1-disciplinas principal
recorta 2-roteiros roteiros
recorta 4-aula-1-certa aula
recorta 11-fim-do-roteiro fim-do-roteiro
