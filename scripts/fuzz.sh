#!/bin/bash
# Builds the fuzzers with clang and runs each over its corpus in fuzz/. With a number it then goes on for that many
# seconds each, and leaves an input that breaks one in build/fuzz/.
#   scripts/fuzz.sh 180
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/instala.sh compila fuzz
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
for nome in criterio dialeto fonte; do
    fuzzer=build/fuzz/fuzz/fuzz_$nome
    "$fuzzer" -runs=0 "fuzz/$nome"
    if [ -n "${1:-}" ]; then
        mkdir -p "build/fuzz/achados_$nome"
        "$fuzzer" -max_total_time="$1" -timeout=10 -max_len=4096 -artifact_prefix="build/fuzz/$nome-" \
            "build/fuzz/achados_$nome" "fuzz/$nome"
    fi
done
