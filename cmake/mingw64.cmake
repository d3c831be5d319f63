# Debian's mingw-w64 (posix threads) for Windows on x86_64.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(alvo x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${alvo}-gcc-posix)
set(CMAKE_CXX_COMPILER ${alvo}-g++-posix)
set(CMAKE_RC_COMPILER ${alvo}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${alvo})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} "/nonexistent") # the host's pkg-config must not answer for the target
