#!/bin/bash
# Builds the Windows program on Debian 12 and leaves in build/windows/pacote:
#   Quorel/           the folder that runs anywhere: one starter a level, no installation needed
#   quorel-windows.zip          the same, packed
#   quorel-windows-instala.exe  the installer (/S for a silent one, /D=PLACE)
# What is made once (Qt, SQLite, Wine's prefix) stays in the cache; see ambiente.sh.
set -euo pipefail
cd "$(dirname "$0")/../.."
aqui=packaging/windows
. "$aqui/ambiente.sh"
scripts/instala.sh janelas
"$aqui/qt.sh"
"$aqui/sqlite.sh"
"$aqui/minizip.sh"
cmake --preset windows >/dev/null
obra=$PWD/build/windows
rm -rf "$obra/instalacao" "$obra/exemplo/exemplo.pronto" # whatever was played there stays out of the package
cmake --build --preset windows --parallel "$(nproc)" --target quorel licao quorel-blocos quorel-cadastro quorel-oficina exemplo
saida=$obra/pacote
pasta=$saida/Quorel
exe=$pasta/QUOREL2001/exe
rm -rf "$saida"
mkdir -p "$saida"
cp -rL "$obra/instalacao/windows" "$pasta"
cp "$obra"/bin/{quorel,quorel-blocos,quorel-cadastro,quorel-oficina}.exe "$exe/"
"$QUOREL_ALVO-strip" "$exe"/*.exe

echo "DLLs:"
for plugin in platforms/qwindows imageformats/qgif imageformats/qico imageformats/qjpeg styles/qwindowsvistastyle; do
    mkdir -p "$exe/${plugin%/*}"
    cp "$QUOREL_QT_WINDOWS/plugins/$plugin.dll" "$exe/${plugin%/*}/"
done
# Qt's own texts, and the folder as the place of all of Qt.
mkdir "$exe/translations"
cp /usr/share/qt6/translations/qtbase_pt_BR.qm "$exe/translations/"
printf '[Paths]\r\nPrefix = .\r\nPlugins = .\r\n' >"$exe/qt.conf"
for ((;;)); do # what programs and plugins need, and what that needs
    novas=0
    while read -r dll; do
        [ -f "$QUOREL_QT_WINDOWS/bin/$dll" ] && [ ! -f "$exe/$dll" ] || continue
        cp "$QUOREL_QT_WINDOWS/bin/$dll" "$exe/"
        echo "  $dll"
        novas=1
    done < <(find "$exe" -name '*.exe' -o -name '*.dll' | xargs "$QUOREL_ALVO-objdump" -p | sed -n 's/^\tDLL Name: //p' | sort -u)
    ((novas)) || break
done

# The folder's own configuration: "#" is the installation beside QUOREL_WINDIR, which the starters set.
printf '%s\r\n' '[zeto]' 'ZETO=#' 'ZETO_CFG=#\cfg' 'ZETO_EXE=#\exe' 'ZETO_MM=#\zeto_mm' 'ZETO_MDB=#' 'ZETO_CAD=#\..' \
    'ZETO_ALUNOS=#\..' 'DirWin=#\..' 'DIRQUOREL=#' 'DBBLOCOS=#\DBBLOCOS' >"$pasta/zeto_cnf.txt"
declare -A niveis=([F1]="Fundamental I" [F2]="Fundamental II" [F3]="Fundamental III" [F4]="Fundamental IV"
    [I1]="Infantil I" [I2]="Infantil II")
listas=$saida/listas
mkdir "$listas"
: >"$listas/niveis.nsh"
for nivel in F1 F2 F3 F4 I1 I2; do
    [ -d "$pasta/QUOREL2001/DBBLOCOS/$nivel" ] || continue
    nome="Quorel - ${niveis[$nivel]}"
    # A folder may have blanks, "&" and "%" in its name, so the path stands in quotes. The slashes keep these out of the
    # values, which are cut there; the last word gives the command line as many words as it has slashes.
    printf '%s\r\n' '@echo off' 'set "QUOREL_WINDIR=%~dp0"' \
        "start \"\" \"%~dp0QUOREL2001\\exe\\quorel.exe\" /NIVEL:$nivel/ \"/CFG:%~dp0zeto_cnf.txt/\" ." >"$pasta/$nome.cmd"
    echo "!insertmacro atalho \"$nome\" $nivel" >>"$listas/niveis.nsh"
done

mkdir -p "$pasta/licencas"
for pacote in qt6-base-dev qt6-translations-l10n gcc-mingw-w64-base libz-mingw-w64-dev mingw-w64-common nsis; do
    cp "/usr/share/doc/$pacote/copyright" "$pasta/licencas/$pacote.txt"
done
cp "$QUOREL_SQLITE_WINDOWS/copyright" "$pasta/licencas/sqlite3.txt"
cp "$QUOREL_MINIZIP_WINDOWS/copyright" "$pasta/licencas/minizip.txt"
# The texts that these name, of which Debian has one copy for all.
grep -oh 'common-licenses/[A-Z][A-Za-z0-9.-]*[A-Za-z0-9]' "$pasta"/licencas/*.txt | sort -u | sed 's|^|/usr/share/|' |
    xargs cp -t "$pasta/licencas"

(cd "$saida" && zip -qr quorel-windows.zip Quorel)

# What the installer lays and takes away, one a line: our programs and the licences as they are, all else unless somebody
# has written it since, the exercise programs included. The register is a case of its own; the starters and their
# configuration are the folder's.
em_pasta() { (cd "$pasta" && find "$@" | LC_ALL=C sort); }
linhas() { # linhas PALAVRA: of paths, "${PALAVRA} folder file path" for each
    while read -r fonte; do
        lugar=${fonte%/*}
        echo "\${$1} \"${lugar//\//\\}\" \"${fonte##*/}\" \"$fonte\""
    done
}
exercicios='/(Zeto|Desenhos?|Vrel|Livros|Calc)\.exe$'
em_pasta QUOREL2001/exe licencas -type f | grep -Ev "$exercicios" | linhas umPrograma >"$listas/programas.nsh"
{
    em_pasta QUOREL2001 -path QUOREL2001/exe -prune -o -type f -print
    em_pasta QUOREL2001/exe -type f | grep -E "$exercicios"
} | linhas umArquivo >"$listas/arquivos.nsh"
em_pasta QUOREL2001/exe -name '*.exe' -o -name '*.dll' | linhas umBinario >"$listas/binarios.nsh"
em_pasta . -mindepth 1 -type d -printf '%P\n' | sed 's|/|\\|g; s|.*|${umaPasta} "&"|' >"$listas/pastas.nsh"
tac "$listas/pastas.nsh" >"$listas/pastas_de_dentro.nsh"
versao=$(sed -n 's/^project(quorel VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
makensis -V2 -NOCD -DPASTA="$pasta" -DLISTAS="$listas" -DVERSAO="$versao" -DTAMANHO="$(du -sk "$pasta" | cut -f1)" \
    -DSAIDA="$saida/quorel-windows-instala.exe" "$aqui/quorel.nsi"
ls -l "$saida"
