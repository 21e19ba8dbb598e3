# Toolchain: 64-bit Windows from Debian, by the mingw-w64 compiler that has C++ threads. Programs run under wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The loader itself before Debian's wrapper, which asks for the 32-bit one in each run.
find_program(ZUL_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(ZUL_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${ZUL_WINE})
endif()
