// What the sources of this folder share beside vek.h.

#pragma once

#include "vek.h"

// files/copy.cpp.  While false, copying and deleting print no success lines.
extern bool vek_file_verbose;

// The name of a file for a message: its alias, in `alias`.  A path too long to
// have one stands for itself.  Turns "\" in `path`.
const char *name_for_message(char *path, char (&alias)[VEK_PATH_SIZE]);
