// What the sources of this folder share beside vek.h.

#pragma once

#include "vek.h"

#include <cstdio>

// A path that a caller has given.  Operations work on the copy, because the
// caller's text may lie in a buffer that naming a file overwrites.  The copy
// has room for any path that a system opens.  A longer one becomes a name that is
// too long for every system: cut, it could name another file.
struct file_path {
    char *given;
    char text[4096];
};
void file_path_init(file_path *path, char *given);

// The name of a file for a message: its alias, in `alias`.  A path too long to
// have one stands for itself.  Converts "\" in both texts of the path.
const char *display_name(file_path *path, char (&alias)[VEK_PATH_SIZE]);

// files/copy.cpp.  While false, copying and deleting print no success lines.
extern bool vek_file_verbose;

// As vorn_vek_copy_file2file_silent, which does not notice a copy that is cut
// short: *error becomes the errno value of that, or 0.
int copy_file_silently(const char *source, const char *target, int *error);

// Copy the rest of an open file to another at once.  Returns 0 or the errno value
// that cut the copy short.
int copy_stream(FILE *source, FILE *target);

// The reports of a copy.  The first two return 1.
int report_copy_failure(const char *what, file_path *path); // for the reason in errno
int report_same_file(file_path *target);
void print_copied(file_path *source, file_path *target);

// files/backup.cpp.  Make the path of a file that of its backup, whose name has
// "q" for the last character.
void to_backup_path(char *path);
// As vek_backup_file.  *unread becomes the errno value with which the file did not
// open, which is not reported, or 0.
int backup_file(char *path, int *unread);

// files/overwrite.cpp.  Put a text over that of a file that can't be replaced by
// another; the mode is "r+b" or "r+".  Meanwhile a copy of the old text is on the
// disk, which is removed when the new text is there.  On failure the old text is
// restored, and errno says why; where that fails too, *left becomes the path of the
// copy, in a static buffer, else null.
bool overwrite_file(const char *path, const char *mode, const char *text, size_t length,
                    const char **left);

// The copy that is left of an earlier overwriting of the file, where the process
// was killed or could not restore the old text; null if there is none.  The second
// is for who has the file locked: a copy of the very text that the file has is
// removed.
const char *overwrite_kept_copy(const char *path);
const char *overwrite_find_loss(const char *path);
