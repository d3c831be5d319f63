#!/bin/bash
# Installs the Debian packages that the Windows build needs and that are missing.
#   packaging/windows/pacotes.sh [testa]      testa: what runs and shows the programs under Wine, too
set -euo pipefail

pacotes="cmake ninja-build ccache python3 g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools
    qt6-base-dev qt6-base-dev-tools wine wine64 nsis tcl zstd zip dpkg-dev"
testa="xvfb xauth xdotool imagemagick fonts-liberation fonts-dejavu-core"
[ "${1:-}" != testa ] || pacotes+=" $testa"

faltam=
for pacote in $pacotes; do
    estado=$(dpkg-query -W -f '${db:Status-Status}' "$pacote" 2>/dev/null || true)
    [ "$estado" = installed ] || faltam+=" $pacote"
done
[ -n "$faltam" ] || exit 0

como=
if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || { echo "Faltam os pacotes:$faltam (instale-os como root)" >&2; exit 2; }
    como="sudo DEBIAN_FRONTEND=noninteractive"
fi
echo "Instalando:$faltam"
export DEBIAN_FRONTEND=noninteractive
$como apt-get update -q
# shellcheck disable=SC2086 # a list of words
$como apt-get install -yq --no-install-recommends $faltam
