// What the sources for Windows share.

#pragma once

#include <windows.h>

// As _open.  Child processes do not inherit the descriptor: they would prevent the
// file from being removed.  Never returns the descriptor of a closed standard stream:
// later output to that stream would go into the file.
int windows_open(const char *path, int flags);
// The same.  Retries for two seconds while another program has the file open without
// sharing it.
int windows_open_retrying(const char *path, int flags);

// Open a file to identify it, even if others have it open.  If it does not open,
// returns INVALID_HANDLE_VALUE and sets *identity to zeros.
HANDLE windows_open_identity(const char *path, BY_HANDLE_FILE_INFORMATION *identity);
