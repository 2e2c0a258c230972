# Cross-compiling for 64-bit Windows with MinGW-w64 (Debian's
# g++-mingw-w64-x86-64). The "posix" variant of the compiler has the C++
# threads the library's std::mutex needs; everything is linked statically.
#
#   cmake -S . -B build-windows -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(ZK_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${ZK_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ZK_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${ZK_MINGW}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${ZK_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
