# 32-bit x86 Linux with the host's multilib g++ (-m32): the build in which the library's 32-bit
# code runs on any machine, directly where the kernel runs 32-bit programs, else under qemu-i386.
# The tool is left out (its libraries are the host's); GoogleTest is compiled from its sources,
# since the host's GoogleTest libraries are 64-bit.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_CXX_COMPILER g++)
set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_FLAGS_INIT "-m32")
set(CMAKE_C_FLAGS_INIT "-m32")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-m32")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-m32")
set(CMAKE_DISABLE_FIND_PACKAGE_GTest ON)
set(CMDDATA_POINTER_BYTES 4)
