# Cross build for 32-bit Windows with MinGW-w64: cmddata.dll, its import library
# libcmddata.dll.a and .exe programs that run under Wine with only cmddata.dll beside them.
# The programs are not run by ctest here; scripts/test.sh runs them through Wine.
#   cmake -S . -B build-win -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-i686-w64-mingw32.cmake
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)

set(CMDDATA_MINGW_PREFIX i686-w64-mingw32)

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
