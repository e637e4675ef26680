# Cross-compiles for 64-bit Windows with Debian's MinGW-w64.  Only the variant with
# POSIX threads has the parts of the standard library that the tests use.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
find_program(VEK_WINDOWS_FORTRAN ${triple}-gfortran-posix)
if(VEK_WINDOWS_FORTRAN)
  set(CMAKE_Fortran_COMPILER ${VEK_WINDOWS_FORTRAN})
endif()

set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The tests run under Wine, with a Wine prefix in the build directory.
set(CMAKE_CROSSCOMPILING_EMULATOR env WINEPREFIX=${CMAKE_BINARY_DIR}/wine WINEDEBUG=-all wine)
