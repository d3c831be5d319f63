# Where the Windows build keeps what it makes once; sourced by the scripts beside it. QUOREL_CACHE names another place.
QUOREL_CACHE=${QUOREL_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/quorel}
export QUOREL_CACHE
export QUOREL_QT_WINDOWS=$QUOREL_CACHE/qt-mingw
export QUOREL_SQLITE_WINDOWS=$QUOREL_CACHE/sqlite-mingw
export QUOREL_MINIZIP_WINDOWS=$QUOREL_CACHE/minizip-mingw
# An archive of that Qt, which saves building it; empty for none.
QUOREL_QT_ARQUIVO=${QUOREL_QT_ARQUIVO-$(dirname "${BASH_SOURCE[0]}")/../../../shared/windows/qt-mingw.tar.zst}
export QUOREL_ALVO=x86_64-w64-mingw32

# fonte PACOTE PASTA: Debian's source of a package, unpacked into PASTA/fonte, without touching the machine's lists.
fonte() {
    local listas=$2/listas
    mkdir -p "$listas/fontes" "$listas/estado/partial"
    for lista in /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list; do
        [ -f "$lista" ] || continue
        sed -e 's/^Types:.*/Types: deb-src/' -e 's/^deb /deb-src /' "$lista" >"$listas/fontes/$(basename "$lista")"
    done
    local opcoes=(-o "Dir::Etc::sourceparts=$listas/fontes" -o Dir::Etc::sourcelist=/dev/null
        -o "Dir::State::lists=$listas/estado" -o "Dir::Cache::srcpkgcache=" -o "Dir::Cache::pkgcache=")
    # A file called sources.list is only taken where its name ends in .list.
    [ ! -f "$listas/fontes/sources.list" ] || mv "$listas/fontes/sources.list" "$listas/fontes/debian.list"
    apt-get "${opcoes[@]}" -q update
    (cd "$2" && rm -rf fonte && apt-get "${opcoes[@]}" -q source "$1" && mv "$1"-*/ fonte)
}

winepath_de() { echo "Z:${1//\//\\}"; } # the path of a file as Wine's programs know it

# quorel_wine: sets up and, once, makes the prefix, apart from the user's own Wine, menus and links.
quorel_wine() {
    QUOREL_WINE=${QUOREL_WINE:-$QUOREL_CACHE/wine}
    mkdir -p "$QUOREL_WINE/casa" "$QUOREL_WINE/tmp"
    export HOME=$QUOREL_WINE/casa WINEPREFIX=$QUOREL_WINE/prefixo WINEDEBUG=${WINEDEBUG:--all} WINEARCH=win64
    export TMPDIR=$QUOREL_WINE/tmp # where Debian's Wine keeps its server: one for all programs, so that it starts once
    export XDG_CACHE_HOME=$HOME/.cache XDG_CONFIG_HOME=$HOME/.config XDG_DATA_HOME=$HOME/.local/share
    export WINEDLLOVERRIDES="winemenubuilder.exe=d;mscoree=d;mshtml=d" DBUS_SESSION_BUS_ADDRESS=disabled:
    export LC_ALL=C.UTF-8 # under C names with accents fail
    exec {tranca}>"$QUOREL_WINE/tranca"
    flock "$tranca"
    if [ ! -f "$WINEPREFIX/pronto" ]; then
        env -u DISPLAY wineboot -i >/dev/null 2>&1
        wine reg add 'HKCR\.txt' /ve /d txtfile /f >/dev/null 2>&1
        # What Windows' own texts are written in stands for a font that Wine does not find; they would get a serif.
        wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' /v 'MS Shell Dlg' \
            /d 'Liberation Sans' /f >/dev/null 2>&1
        wineserver -w
        mkdir -p "$QUOREL_WINE/fontes"
        ln -sf /usr/share/fonts/truetype/{liberation*,dejavu}/*.ttf "$QUOREL_WINE/fontes/"
        touch "$WINEPREFIX/pronto"
    fi
    exec {tranca}>&-
}
