// What the sources of this folder share beside vek.h.

#pragma once

#include "vek.h"

// files/copy.cpp.  While false, copying and deleting print no success lines.
extern bool vek_file_verbose;

// The system's error that cut the latest copy short; 0 for a copy that is whole.
// The operations themselves do not look at it.
extern int vek_copy_error;

// A path that a caller has given.  Operations work on the copy, because the
// caller's text may lie in a buffer that naming a file overwrites.  The copy
// has room for any path that a system opens.  A longer one becomes a name that is
// too long for every system: cut, it could name another file.
struct file_path {
    char *given;
    char text[4096];
};
void file_path_take(file_path *path, char *given);

// files/file_operations.cpp.  Make the path of a file that of its backup, whose
// name has "q" for the last character.
void turn_to_backup(char *path);

// The name of a file for a message: its alias, in `alias`.  A path too long to
// have one stands for itself.  Turns "\" in both texts of the path.
const char *name_for_message(file_path *path, char (&alias)[VEK_PATH_SIZE]);
