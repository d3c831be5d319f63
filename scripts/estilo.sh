#!/bin/bash
# The house's rules that a machine can check: format, sizes, no system #if outside platform, no delete.
# --tidy runs clang-tidy too, over build/debug (slow).
set -euo pipefail
cd "$(dirname "$0")/.."
falhas=0
falha() { echo "estilo: $*" >&2; falhas=1; }

mapfile -t fontes < <(git ls-files -co --exclude-standard -- 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' 'bench/*.cpp' 'bench/*.h')
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

if [ "${1:-}" = --tidy ]; then
    printf '%s\n' "${fontes[@]}" | grep '\.cpp$' | grep '^src/' |
        xargs -P "$(nproc)" -n 4 clang-tidy -p build/debug --quiet || falha "clang-tidy"
fi
exit $falhas
