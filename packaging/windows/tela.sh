#!/bin/bash
# Runs a command on a virtual display of its own, which goes with it: packaging/windows/tela.sh COMMAND…
# A command that is run so by another that is run so stays on the display of the first.
set -euo pipefail
[ -z "${QUOREL_TELA:-}" ] || exec "$@"
numero=$(mktemp)
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset 3>"$numero" 2>/dev/null &
tela=$!
trap 'kill "$tela" 2>/dev/null; wait 2>/dev/null; rm -f "$numero"' EXIT
for ((n = 0; n < 200; n++)); do
    [ ! -s "$numero" ] || break
    sleep 0.1
done
DISPLAY=:$(cat "$numero")
[ "$DISPLAY" != : ] || { echo "tela.sh: nenhuma tela virtual" >&2; exit 1; }
export DISPLAY QUOREL_TELA=$DISPLAY
"$@"
