// What the sources for Windows share.

#pragma once

#include <windows.h>

// As _open.  Nothing is handed to child processes: they would keep files from
// being removed.  A descriptor of a closed standard stream is not used: what is
// printed there later would go into the file.
int windows_open(const char *path, int flags);
// The same, for two seconds while another program shares the file with nobody.
int windows_open_soon(const char *path, int flags);

// Open a file for what it is, whoever has it open.  INVALID_HANDLE_VALUE, and
// zeros, if it does not open.
HANDLE windows_open_identity(const char *path, BY_HANDLE_FILE_INFORMATION *identity);
