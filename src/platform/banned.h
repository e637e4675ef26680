// Included before every source of the libraries (cmake/options.cmake).  The compiler
// rejects functions that write without a bound, may leave a string unterminated, split a
// string in place, do not report an invalid number, or choose predictable names for
// temporary files.  text.h and platform.h name the replacements.

#pragma once

// Headers that declare these functions must be included before they are poisoned.
#include <cstdio>
#include <cstring>
#include <stdlib.h> // and what it declares in the global namespace
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
