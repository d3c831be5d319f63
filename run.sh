#!/bin/bash
# Builds the shell and starts it on the sample installation. Further arguments go to the shell (default: /NIVEL:F1).
# With no display it plays the main job on a virtual one and leaves pictures and the logged row in saida/.
set -euo pipefail
cd "$(dirname "$0")"
uso=(compila mostra)
scripts/instala.sh "${uso[@]}"
cmake --preset release >/dev/null
cmake --build --preset release --target quorel exemplo

raiz=$PWD/build/release
export QUOREL_WINDIR=$raiz/instalacao/windows
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$raiz/bin/quorel" "${@:-/NIVEL:F1}"
fi
exec scripts/demonstra.sh "$raiz" saida
