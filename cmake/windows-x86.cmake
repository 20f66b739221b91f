# Builds for Windows (x86) with the mingw-w64 cross compiler, in its variant with POSIX threads, which std::thread needs.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(tamarok_cross i686-w64-mingw32)
set(CMAKE_CXX_COMPILER ${tamarok_cross}-g++-posix)
set(CMAKE_C_COMPILER ${tamarok_cross}-gcc-posix)
set(CMAKE_RC_COMPILER ${tamarok_cross}-windres)
# SSE arithmetic gives doubles the same last digit as on 64 bits. Callers keep the stack aligned to 4 bytes only, so each
# function that needs more aligns it anew.
set(CMAKE_CXX_FLAGS_INIT "-march=pentium4 -mfpmath=sse -mstackrealign")
set(CMAKE_C_FLAGS_INIT "${CMAKE_CXX_FLAGS_INIT}")
set(TAMAROK_WIDL ${tamarok_cross}-widl CACHE STRING "Compiler of interface descriptions")
set(CMAKE_FIND_ROOT_PATH /usr/${tamarok_cross})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
