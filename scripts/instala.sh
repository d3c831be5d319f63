#!/bin/bash
# Installs the Debian packages that a purpose needs and that are missing. Purposes: compila, testa, mostra, revisa, mede,
# fuzz, and for the Windows program janelas and testa_janelas.
#   scripts/instala.sh compila testa
set -euo pipefail

compila="build-essential cmake ninja-build ccache pkg-config python3
    qt6-base-dev qt6-base-dev-tools libsqlite3-dev libxcb1-dev libminizip-dev zlib1g-dev libxcb-randr0-dev"
fontes="fonts-liberation fonts-dejavu-core"
mostra="$fontes qt6-translations-l10n xvfb xauth openbox xdotool x11-utils imagemagick procps"
testa="$mostra git clang-format poppler-utils python3-tk"
revisa="clang-tidy"
mede="libbenchmark-dev libqt6sql6-sqlite"
fuzz="clang libclang-rt-dev"
janelas="cmake ninja-build ccache python3 g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools libz-mingw-w64-dev
    qt6-base-dev qt6-base-dev-tools wine wine64 nsis tcl zstd zip dpkg-dev qt6-translations-l10n"
testa_janelas="xvfb xauth xdotool imagemagick procps $fontes fonts-wine"

pacotes=
for uso in "$@"; do
    case $uso in
    compila | testa | mostra | revisa | mede | fuzz | janelas | testa_janelas) pacotes+=" ${!uso}" ;;
    *) sed -n '2,4p' "$0" >&2; exit 2 ;;
    esac
done

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
