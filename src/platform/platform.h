// What differs between systems, behind one seam.  All results are true for
// success; where a file operation fails, errno says why.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

// The current directory; false, also when it has no room in `width` bytes.
bool platform_current_dir(char *to, size_t width);
// Whether a process can make the directory its current one.  Where one call tells,
// this is not tried.
bool platform_can_enter(const char *path);
bool platform_make_dir(const char *path); // one level

// Open for reading, with fopen's mode "r" or "rb".  A directory does not open, nor
// does a device that gives bytes without end, and a pipe that nobody writes to does
// not keep the caller waiting.
FILE *platform_open_to_read(const char *path, const char *mode);
// Whether a path would open: one open, one look at what was opened.
bool platform_opens_for_reading(const char *path);
// Create or empty a file and close it again, without waiting for anybody.  On
// POSIX a symbolic link gives way to the file.
bool platform_create_file(const char *path);
// Open for writing or appending, with fopen's mode.  A pipe does not open: it
// could keep the caller waiting, or end the process when its reader leaves.  A
// file that does not open is not emptied either.
FILE *platform_open_to_write(const char *path, const char *mode);

// Have the system put on the disk what was written to a stream, or to a file
// that is closed.  Where there is no disk, all is well.
bool platform_flush(FILE *file);
bool platform_flush_file(const char *path);

// Hold a file against every process that holds it in this way, and wait until
// no other does.  The file is opened as for appending, and made if there is
// none, which *is_new tells; -1 if it does not open.  Where the file system knows
// no locks, nothing is held.
intptr_t platform_hold_file(const char *path, bool *is_new);
void platform_let_go(intptr_t hold);
void platform_let_go_and_remove(intptr_t hold, const char *path); // for a new file, still empty
// Wait until nobody holds the open file, and keep it from being held until it is
// closed.
void platform_share(FILE *file);

// As fread, but not to be interrupted.
size_t platform_read(FILE *file, char *to, size_t size);

// One piece of a line into `to`: at most width - 1 characters, the line feed
// included, as fgets would take them from a file whose lines end in a line
// feed alone: a carriage return directly before the line feed or the end of
// the file does not count.  A NUL byte ends the piece's text, not the piece.
// False at the end of the file, and for good when it can't be read on, which
// ferror tells.
bool platform_read_piece(FILE *file, char *to, size_t width);

// The long form of a path; false if there is none of fewer than `width`
// characters.
bool platform_long_path(const char *path, char *to, size_t width);

// The directory for temporary files, "/" at its end.  On POSIX it is made for
// this process alone at the first call, readable by its user only, and removed
// with the process if it is empty then: whoever else writes to a common one
// could plant a file of a known name.  If it is gone it is made again; a child
// of the process gets one of its own.
bool platform_temporary_dir(char *to, size_t width);

// Hold that directory against other processes, where it is not this one's alone.
intptr_t platform_hold_temporary_dir();
void platform_let_temporary_dir_go(intptr_t hold);

// Make an empty file that is as private as another, which exists.
void platform_create_like(const char *path, const char *other);

// Whether two texts name one file on disk.
bool platform_same_file(const char *first, const char *second);

bool platform_remove_file(const char *path); // never a directory
// Rename; an existing target is left alone (EEXIST).  Where a system folds
// case, the file itself in other letters is no existing target.
bool platform_rename(const char *old_path, const char *new_path);
