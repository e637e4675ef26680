// Read in front of every source of the libraries (cmake/options.cmake): the
// compiler refuses what writes without a bound, what may leave a text without
// its end, what splits it in place, what has no answer for a bad number, and
// names of temporary files that others can guess.  text.h and platform.h say
// what to use.

#pragma once

// No header may name these functions from here on.
#include <cstdio>
#include <cstring>
#include <stdlib.h> // and what it brings into the global namespace
#ifdef VEK_NEEDS_WINDOWS_HEADERS
#include <direct.h>
#include <windows.h>
#endif

#undef alloca // a macro on some systems

#pragma GCC poison strcpy stpcpy strcat sprintf vsprintf gets
#pragma GCC poison scanf fscanf sscanf vscanf vfscanf vsscanf
#pragma GCC poison strncpy stpncpy strncat strtok
#pragma GCC poison atoi atol atoll atof
#pragma GCC poison alloca tmpnam tempnam mktemp
