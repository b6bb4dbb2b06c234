# Cross build for 64-bit Windows with MinGW-w64: the same library, tests and tool, for machines
# whose kernel cannot run 32-bit x86 programs (and so not 32-bit Wine). ctest runs its programs
# under 64-bit Wine.
#   cmake -S . -B build-win64 -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-x86_64-w64-mingw32.cmake
#   (or: cmake --preset win64)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMDDATA_POINTER_BYTES 8)  # checked by the library when it compiles
set(CMDDATA_MINGW_PREFIX x86_64-w64-mingw32)
set(CMDDATA_WINEARCH win64)
# wine64 first: where both widths are installed, Debian's `wine` script picks the 32-bit one.
set(CMDDATA_WINE_NAMES wine64 wine)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
