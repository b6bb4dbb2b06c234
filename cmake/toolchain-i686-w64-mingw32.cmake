# Cross build for 32-bit Windows with MinGW-w64: the DLL that ships. ctest runs its programs
# under 32-bit Wine, where the machine can run 32-bit x86 programs at all.
#   cmake -S . -B build-win -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-i686-w64-mingw32.cmake
#   (or: cmake --preset win32)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(CMDDATA_POINTER_BYTES 4)  # checked by the library when it compiles
set(CMDDATA_MINGW_PREFIX i686-w64-mingw32)
set(CMDDATA_WINEARCH win32)
# Debian's /usr/lib/wine/wine is the 32-bit loader; /usr/bin/wine is a script in front of it.
set(CMDDATA_WINE_NAMES wine)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
