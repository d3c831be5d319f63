#!/bin/bash
# Qt for Windows into the cache, once: unpacked from an archive where there is one (QUOREL_QT_ARQUIVO, or
# shared/windows/qt-mingw.tar.zst beside the repository), else built from Debian's source package, which takes an hour.
set -euo pipefail
aqui=$(cd "$(dirname "$0")" && pwd)
. "$aqui/ambiente.sh"
[ ! -f "$QUOREL_QT_WINDOWS/bin/Qt6Widgets.dll" ] || exit 0
arquivo=$QUOREL_QT_ARQUIVO

obra=$(mktemp -d)
trap 'rm -rf "$obra"' EXIT
mkdir -p "$QUOREL_CACHE"
if [ -f "$arquivo" ]; then
    tar -C "$obra" --zstd -xf "$arquivo"
    mv -T "$obra/qt-mingw" "$QUOREL_QT_WINDOWS"
    exit 0
fi

fonte qt6-base "$obra"
cd "$obra/fonte"
# Without Direct2D Gui leaves the DirectWrite fonts out, which these two still ask for.
sed -i 's/#if QT_CONFIG(directwrite)/#if QT_CONFIG(directwrite) \&\& QT_CONFIG(direct2d)/' src/printsupport/platform/windows/qprintengine_win.cpp
sed -i 's/#if QT_CONFIG(directwrite3)/#if QT_CONFIG(directwrite3) \&\& QT_CONFIG(direct2d)/' \
    src/plugins/platforms/windows/qwindowsintegration.cpp
desligados=(opengl vulkan dbus sql icu glib concurrent xml tabletevent direct2d openssl zstd brotli gssapi pkg_config
    system_zlib system_png system_jpeg system_freetype system_harfbuzz system_pcre2 system_doubleconversion
    system_libb2 textmarkdownreader)
desligados=("${desligados[@]/#/-DFEATURE_}")
export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime # for precompiled headers
cmake -G Ninja -S . -B ../qt -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$obra/pronto" \
    -DCMAKE_TOOLCHAIN_FILE="$aqui/../../cmake/mingw64.cmake" -DBUILD_SHARED_LIBS=ON -DBUILD_WITH_PCH=ON \
    -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
    -DQT_QMAKE_TARGET_MKSPEC=win32-g++ -DQT_QMAKE_DEVICE_OPTIONS="CROSS_COMPILE=$QUOREL_ALVO-" \
    -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_DOCS=OFF -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF \
    -DINPUT_opengl=no -DINPUT_openssl=no "${desligados[@]/%/=OFF}" >configura.log 2>&1 ||
    { tail -n 40 configura.log >&2; exit 1; }
cmake --build ../qt
cmake --install ../qt >/dev/null
for dll in libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll; do
    cp "$("$QUOREL_ALVO-g++-posix" -print-file-name="$dll")" "$obra/pronto/bin/"
done
mv -T "$obra/pronto" "$QUOREL_QT_WINDOWS"
