# Cross-compiles for 64-bit Windows with Debian's MinGW-w64 (the POSIX-threads
# compilers, so that std::thread works). Used for Qt, GoogleTest and Plotwell
# by scripts/build-windows.sh.
#
# Libraries and packages are looked for only under the MinGW root and the
# folders given in CMAKE_FIND_ROOT_PATH on the command line (the cross-built
# Qt and GoogleTest); programs only on the host.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(CMAKE_AR ${triple}-ar CACHE FILEPATH "")
set(CMAKE_RANLIB ${triple}-ranlib CACHE FILEPATH "")

list(APPEND CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
