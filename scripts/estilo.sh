#!/bin/bash
# The house's rules that a machine can check: format, sizes, no system #if outside platform, no delete, the picture of the
# folders.
# scripts/estilo.sh                  every commit; seconds, and silent when all is well
# scripts/estilo.sh --tidy           clang-tidy too, over all of src/, two files at a time: about ten minutes, so it is no
#                                    part of the tests; needs build/debug built (cmake --preset debug, and its headers)
# scripts/estilo.sh --tidy ARQUIVO…  the same over some files only
# scripts/estilo.sh --tidy-ultimo    the same over what the last commit touched, at most 30 files
set -euo pipefail
cd "$(dirname "$0")/.."
falhas=0
alvos=()
falha() { echo "estilo: $*" >&2; falhas=1; }

mapfile -t fontes < <(git ls-files -co --exclude-standard -- 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' 'bench/*.cpp' 'bench/*.h' 'fuzz/*.cpp')
((${#fontes[@]})) || exit 0

clang-format --dry-run -Werror "${fontes[@]}" || falha "rode clang-format -i nos arquivos acima"

for arquivo in "${fontes[@]}"; do
    linhas=$(grep -cE '[^[:space:]]' "$arquivo" || true)
    ((linhas <= 400)) || falha "$arquivo tem $linhas linhas (no máximo 400)"
done

if grep -nE '^ *# *(if|ifdef|elif).*(_WIN32|Q_OS_|__linux__)' -- "${fontes[@]}" | grep -v '^src/platform/'; then
    falha "sistema operacional perguntado fora de src/platform"
fi
if grep -nE '\bdelete +[a-zA-Z_]|\bdelete\[\]' -- "${fontes[@]}" | grep -v '= delete'; then
    falha "delete"
fi

scripts/pastas.py --confere || falha "desenho das pastas"

if [ "${1:-}" = --tidy-ultimo ]; then
    mapfile -t ultimos < <(git show --first-parent --name-only --diff-filter=d --format= HEAD -- 'src/*.cpp' |
        while read -r f; do if grep -q "/$f\"" build/debug/compile_commands.json; then echo "$f"; fi; done | sed 30q)
    ((${#ultimos[@]})) || exit $falhas
    set -- --tidy "${ultimos[@]}"
fi
if [ "${1:-}" = --tidy ]; then
    shift
    # clang can't read what g++ precompiled.
    mkdir -p build/tidy
    sed -E 's/-Winvalid-pch -include [^ "]+|-fpch-preprocess//g' build/debug/compile_commands.json >build/tidy/compile_commands.json
    (($#)) || mapfile -t alvos < <(sed -n "s|.*\"file\": \"$PWD/\(src/[^\"]*\)\".*|\1|p" build/debug/compile_commands.json)
    printf '%s\n' "$@" "${alvos[@]}" | grep . |
        xargs -P 2 -n 1 clang-tidy -p build/tidy --quiet 2> >(grep -v 'warnings generated' >&2) || falha "clang-tidy"
fi
exit $falhas
