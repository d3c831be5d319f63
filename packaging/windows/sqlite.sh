#!/bin/bash
# SQLite for Windows from Debian's source package, made once: a static library with its header in the cache.
set -euo pipefail
aqui=$(cd "$(dirname "$0")" && pwd)
. "$aqui/ambiente.sh"
[ ! -f "$QUOREL_SQLITE_WINDOWS/libsqlite3.a" ] || exit 0

obra=$(mktemp -d)
trap 'rm -rf "$obra"' EXIT
fonte sqlite3 "$obra"
cd "$obra/fonte"
# The source has no amalgamation; its own rules make it.
./configure --disable-tcl --disable-readline >/dev/null
make sqlite3.c >/dev/null
"$QUOREL_ALVO-gcc-posix" -O2 -DSQLITE_ENABLE_COLUMN_METADATA -DSQLITE_THREADSAFE=1 -c sqlite3.c -o sqlite3.o
"$QUOREL_ALVO-ar" rcs libsqlite3.a sqlite3.o
mkdir -p "$QUOREL_SQLITE_WINDOWS"
cp sqlite3.h debian/copyright "$QUOREL_SQLITE_WINDOWS/"
mv libsqlite3.a "$QUOREL_SQLITE_WINDOWS/"
