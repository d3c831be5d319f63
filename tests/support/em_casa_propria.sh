#!/bin/sh
# Runs a test in a home, a runtime directory and a Windows directory that are its own and go with it.
casa=$(mktemp -d) || exit 1
trap 'rm -rf "$casa"' EXIT
mkdir -m 700 "$casa/run" "$casa/win" "$casa/home" "$casa/tmp"
HOME=$casa/home XDG_RUNTIME_DIR=$casa/run QUOREL_WINDIR=$casa/win QUOREL_PENDENTES=$casa/espera TMPDIR=$casa/tmp XDG_DATA_HOME=$casa/home/data XDG_CONFIG_HOME=$casa/home/config XDG_CACHE_HOME=$casa/home/cache SPEECHD_ADDRESS=unix_socket:$casa/voz \
    "$@"
