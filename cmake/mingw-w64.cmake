# Shared part of the MinGW-w64 cross builds; the toolchain files beside it name the target:
#   toolchain-i686-w64-mingw32.cmake     32-bit Windows (the shipped DLL), run under 32-bit Wine
#   toolchain-x86_64-w64-mingw32.cmake   64-bit Windows, run under 64-bit Wine
# Each sets CMDDATA_MINGW_PREFIX, CMAKE_SYSTEM_PROCESSOR, CMDDATA_WINEARCH (win32 or win64) and
# CMDDATA_WINE_NAMES (the Wine loaders that run its programs, best first) before including this.
#
# The result is cmddata.dll, its import library libcmddata.dll.a and .exe programs that need
# only cmddata.dll beside them. ctest runs them under Wine (the emulator set below), in a Wine
# prefix of the build tree's own.
set(CMAKE_SYSTEM_NAME Windows)

# The win32 thread model needs no winpthread DLL at run time; fall back to the default
# compilers where the distribution ships only those.
find_program(CMDDATA_MINGW_CXX NAMES ${CMDDATA_MINGW_PREFIX}-g++-win32 ${CMDDATA_MINGW_PREFIX}-g++
  REQUIRED)
find_program(CMDDATA_MINGW_CC NAMES ${CMDDATA_MINGW_PREFIX}-gcc-win32 ${CMDDATA_MINGW_PREFIX}-gcc)
set(CMAKE_CXX_COMPILER ${CMDDATA_MINGW_CXX})
if(CMDDATA_MINGW_CC)
  set(CMAKE_C_COMPILER ${CMDDATA_MINGW_CC})
endif()
find_program(CMAKE_RC_COMPILER NAMES ${CMDDATA_MINGW_PREFIX}-windres)
find_program(CMAKE_AR NAMES ${CMDDATA_MINGW_PREFIX}-ar)
find_program(CMAKE_RANLIB NAMES ${CMDDATA_MINGW_PREFIX}-ranlib)

set(CMAKE_FIND_ROOT_PATH /usr/${CMDDATA_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Wine as the emulator: ctest starts each cross-built test program through it. Debian
# keeps the loaders of both widths in /usr/lib/wine; elsewhere they are on PATH. -DCMDDATA_WINE=
# picks another loader. Every run gets no debug chatter, no offer to install Wine's .NET and
# HTML engines, and a time limit of its own (CMDDATA_WINE_TIMEOUT seconds).
find_program(CMDDATA_WINE NAMES ${CMDDATA_WINE_NAMES} PATHS /usr/lib/wine NO_DEFAULT_PATH)
find_program(CMDDATA_WINE NAMES ${CMDDATA_WINE_NAMES})
find_program(CMDDATA_TIMEOUT NAMES timeout)
set(CMDDATA_WINE_TIMEOUT 900 CACHE STRING "Seconds one program may run under Wine")
if(CMDDATA_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_COMMAND} -E env
    WINEPREFIX=${CMAKE_BINARY_DIR}/wineprefix WINEARCH=${CMDDATA_WINEARCH} WINEDEBUG=-all
    WINEDLLOVERRIDES=mscoree,mshtml=)
  if(CMDDATA_TIMEOUT)
    list(APPEND CMAKE_CROSSCOMPILING_EMULATOR ${CMDDATA_TIMEOUT} -k 10 ${CMDDATA_WINE_TIMEOUT})
  endif()
  list(APPEND CMAKE_CROSSCOMPILING_EMULATOR ${CMDDATA_WINE})
endif()
