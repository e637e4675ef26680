// What differs between systems, behind one seam.  All results are true for
// success; where a file operation fails, errno says why.  No operation gives up
// because a signal has interrupted it, and no file gets the descriptors 0 to 2.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

// The current directory; false, also when it has no room in `width` bytes.
bool platform_current_dir(char *to, size_t size);
// Whether a process can make the directory its current one.  Where one call tells,
// this is not tried.
bool platform_dir_is_accessible(const char *path);
bool platform_make_dir(const char *path); // one level

// A directory that is open for what lies in it; null if it can't be listed.
struct open_dir;
open_dir *platform_open_dir(const char *path);
// The name of the next entry.  False at the end (errno is 0), and when the
// directory can't be read on.
bool platform_read_dir(open_dir *dir, char *name, size_t size);
// As the two above, of a path that starts in the directory.
bool platform_dir_in_is_accessible(open_dir *dir, const char *path);
bool platform_make_dir_in(open_dir *dir, const char *path);
void platform_close_dir(open_dir *dir);

// Open for reading, byte by byte.  A directory does not open, nor does a device
// that gives bytes without end, and a pipe that nobody writes to does not keep
// the caller waiting.
FILE *platform_open_to_read(const char *path);
// The same; on Windows a file that another program shares with nobody, as a virus
// scanner does for a moment, is tried again for two seconds.
FILE *platform_open_to_read_soon(const char *path);
// Whether a path would open: one open, one look at what was opened.
bool platform_is_readable_file(const char *path);
// Whether a file of that name can be created in a directory, without waiting for
// anybody.  It is removed again, as is what had the name before.  On POSIX, where
// another user's file has the name and can't be removed or opened, the rights to
// the directory decide.
bool platform_can_create(const char *dir, const char *name);
// Open for writing or appending, with fopen's mode, or, with "r+" and "r+b", a
// file that exists, without emptying it.  A pipe does not open: it could keep the
// caller waiting, or end the process when its reader leaves.  A file that does
// not open is not emptied either.
FILE *platform_open_to_write(const char *path, const char *mode);

// As fread and fwrite.  What is written in this way goes to the system at once;
// the stream must hold nothing else.
size_t platform_read(FILE *file, char *to, size_t size);
bool platform_write(FILE *file, const char *from, size_t size);
bool platform_rewind(FILE *file);
bool platform_cut(FILE *file); // where it was written to last, or is to be next
// Have the system put on the disk what was written to a stream.  Where there is no
// disk, all is well.
bool platform_sync(FILE *file);

// The long form of a path; false if there is none of fewer than `width`
// characters.
bool platform_long_path(const char *path, char *to, size_t size);

// The directory for temporary files, "/" at its end.  On POSIX it is made for
// this process alone at the first call, readable by its user only, and removed
// with the process if it is empty then: whoever else writes to a common one
// could plant a file of a known name.  If it is gone it is made again; a child
// of the process gets one of its own.
bool platform_temporary_dir(char *to, size_t size);
// Lock that directory against other processes, where it is not this one's alone.
// Waits at most 10 seconds; -1 if that was in vain.  What is not positive is no lock.
intptr_t platform_lock_temp_dir();
void platform_unlock_temp_dir(intptr_t lock);

// Whether two texts name one file on disk.
bool platform_same_file(const char *first, const char *second);

bool platform_remove_file(const char *path); // never a directory
// Rename; an existing target is left alone (EEXIST).  Where a system folds
// case, the file itself in other letters is no existing target.
bool platform_rename(const char *old_path, const char *new_path);
