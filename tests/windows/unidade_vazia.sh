#!/bin/bash
# Runs a program under Wine with an optical drive X: that has no medium: unidade_vazia.sh PROGRAM.exe ARGUMENTS…
# The drive is the machine's own for all programs, so a copy of Wine's prefix gets it, which goes with the program.
set -euo pipefail
janelas=$(cd "$(dirname "$0")/../../packaging/windows" && pwd)
. "$janelas/ambiente.sh"
copia=$(
    quorel_wine
    wineserver -w # which writes all that it knows when it ends
    copia=$(mktemp -d "$QUOREL_WINE/vazia.XXXXXX") # beside the prefix, for the links
    mkdir -p "$copia/casa" "$copia/tmp"
    cp -al "$WINEPREFIX" "$copia/prefixo"
    cp --remove-destination "$WINEPREFIX"/*.reg "$copia/prefixo/" # written in place, where others see them
    cp -a "$QUOREL_WINE/fontes" "$copia/fontes"
    echo "$copia"
)
export QUOREL_WINE=$copia
fecha() {
    (quorel_wine && wineserver -k) || true
    rm -rf "$copia"
}
trap fecha EXIT
ln -s "$copia/sem_midia" "$copia/prefixo/dosdevices/x:" # which leads nowhere
"$janelas/wine.sh" reg add 'HKLM\Software\Wine\Drives' /v x: /t REG_SZ /d cdrom /f >/dev/null
(quorel_wine && wineserver -w) # drives are looked for when Wine starts
"$janelas/wine.sh" "$@"
