// What the sources of this folder share besides vek.h.

#pragma once

#include "vek.h"

#include <cstdio>

// A path from a caller.  Operations use the copy: the caller's string may be in a
// buffer that is overwritten when a file is displayed by its name.  The copy has room
// for any path that a system opens.
struct file_path {
    char *given;
    char text[4096];
    bool is_too_long; // for every system; `text` is empty
};
void file_path_init(file_path *path, char *given);
// Whether the path can be used.  False, with ENAMETOOLONG in errno, if it is too long.
bool file_path_is_usable(const file_path *path);

// The name of a file for a message: its alias, in `alias`, or the given path if it is
// too long to have one.  Converts "\" to "/" in both strings of the path.
const char *display_name(file_path *path, char (&alias)[VEK_PATH_SIZE]);

// files/copy.cpp.  While false, copying and deleting print no success lines.
extern bool vek_file_verbose;

// As vorn_vek_copy_file2file_silent, which ignores read and write errors: *error
// becomes the errno value of the error, or 0.
int copy_file_silently(const char *source, const char *target, int *error);

// Copy the rest of an open file to another, unbuffered.  Returns 0, or the errno value
// of a read or write error.
int copy_stream(FILE *source, FILE *target);

// The reports of a copy.  The first two return 1.
int report_copy_failure(const char *what, file_path *path); // with the reason in errno
int report_same_file(file_path *target);
void print_copied(file_path *source, file_path *target);

// files/backup.cpp.  Change the path of a file into the path of its backup: the last
// character becomes "q".
void to_backup_path(char *path);
// As vek_backup_file.  If the file does not open, *unread becomes the errno value, and
// nothing is reported.  Otherwise it becomes 0.
int backup_file(char *path, int *unread);

// files/overwrite.cpp.  Overwrite the contents of a file that can't be replaced by
// another.  `mode` is "r+b" or "r+".  A safety copy of the old contents is on the disk
// until the new contents are.  On failure the old contents are restored, and errno says
// why.  If restoring fails too, *left becomes the path of the safety copy, in a static
// buffer.  Otherwise it becomes null.
bool overwrite_file(const char *path, const char *mode, const char *text, size_t length,
                    const char **left);

// Returns the path of the safety copy that an earlier call left, because the process was
// killed or could not restore the file.  In a static buffer; null if there is none.
const char *find_safety_copy(const char *path);
// The same, for a caller that has locked the file: a copy that equals the file is
// removed.
const char *find_needed_safety_copy(const char *path);
