#!/bin/bash
# minizip for Windows from Debian's source package, made once: a static library with its headers in the cache. zlib comes
# from libz-mingw-w64-dev.
set -euo pipefail
aqui=$(cd "$(dirname "$0")" && pwd)
. "$aqui/ambiente.sh"
[ ! -f "$QUOREL_MINIZIP_WINDOWS/libminizip.a" ] || exit 0

obra=$(mktemp -d)
trap 'rm -rf "$obra"' EXIT
fonte minizip "$obra"
cd "$obra/fonte"
for parte in zip unzip ioapi; do
    "$QUOREL_ALVO-gcc-posix" -O2 -w -ffile-prefix-map="$PWD"=. -c $parte.c -o $parte.o
done
"$QUOREL_ALVO-ar" rcsD libminizip.a zip.o unzip.o ioapi.o
mkdir -p "$QUOREL_MINIZIP_WINDOWS/include/minizip"
cp zip.h unzip.h ioapi.h "$QUOREL_MINIZIP_WINDOWS/include/minizip/"
cp debian/copyright "$QUOREL_MINIZIP_WINDOWS/"
mv libminizip.a "$QUOREL_MINIZIP_WINDOWS/"
