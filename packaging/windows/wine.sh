#!/bin/bash
# Runs a Windows program under Wine in a prefix of its own, which is made at the first call:
#   packaging/windows/wine.sh PROGRAM.exe ARGUMENTS…
# QUOREL_WINE names another prefix. Variables QT_… reach the program as they are.
set -euo pipefail
. "$(cd "$(dirname "$0")" && pwd)/ambiente.sh"
quorel_wine

export QT_FORCE_STDERR_LOGGING=1 # else what Qt and its tests print goes to a debugger
while IFS='=' read -r nome valor; do # Wine keeps them from its programs, and hands them over under another name
    export "WINE$nome=$valor"
done < <(env | grep '^QT_' | grep -v '^QT_PLUGIN_PATH=' || true)
if [[ ${QUOREL_WINDIR:-} = /* ]]; then
    export QUOREL_WINDIR=$(winepath_de "$QUOREL_WINDIR")
fi
export WINEQT_PLUGIN_PATH=$(winepath_de "$QUOREL_QT_WINDOWS/plugins")
export WINEQT_QPA_FONTDIR=$(winepath_de "$QUOREL_WINE/fontes") # for windows that are not on the screen
export WINEPATH=$(winepath_de "$QUOREL_QT_WINDOWS/bin")
[ -p /dev/stdout ] || exec wine "$@"
# Wine's own programs stay for some seconds with this one's output open. Whoever reads a pipe to its end would wait for
# them, and start the next program just when their server is ending.
escrito=$(mktemp)
codigo=0
wine "$@" >"$escrito" 2>&1 || codigo=$?
cat "$escrito"
rm -f "$escrito"
exit "$codigo"
