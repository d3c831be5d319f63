#!/bin/bash
# Builds everything and runs all tests. An argument names another preset: ./test.sh sanitizers
set -euo pipefail
cd "$(dirname "$0")"
preset=${1:-debug}
scripts/instala.sh compila testa
scripts/estilo.sh
cmake --preset "$preset"
cmake --build --preset "$preset"
ctest --preset "$preset" --parallel "$(nproc)"
