// What differs between systems.  Functions of type bool return true on success.  If
// a file operation fails, errno says why.  Operations continue when a signal
// interrupts them.  No file is opened with a descriptor from 0 to 2.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

// The current directory.  False, also if it does not fit.
bool platform_current_dir(char *to, size_t size);
// Whether the process can change to the directory.  Does not change to it.
bool platform_dir_is_accessible(const char *path);
bool platform_make_dir(const char *path); // one level

// An open directory, for listing its entries.  Null if it cannot be listed.
struct open_dir;
open_dir *platform_open_dir(const char *path);
// The name of the next entry, or the empty string if it does not fit.  False at the
// end (errno is 0) and on a read error.
bool platform_read_dir(open_dir *dir, char *name, size_t size);
// As platform_dir_is_accessible and platform_make_dir, of a path relative to `dir`.
bool platform_dir_is_accessible_at(open_dir *dir, const char *path);
bool platform_make_dir_at(open_dir *dir, const char *path);
void platform_close_dir(open_dir *dir);

// Open for reading.  Line endings are not converted.  Directories and endless
// devices do not open.  Does not wait for a pipe without a writer.
FILE *platform_open_to_read(const char *path);
// The same.  On Windows, retries for two seconds while another program has the file
// open without sharing it, as a virus scanner does for a moment.
FILE *platform_open_to_read_retrying(const char *path);
// Whether a path would open for reading; true also for an endless device.  Reads
// nothing: uses one open and one fstat.
bool platform_is_readable_file(const char *path);
// Whether a file of that name can be created in a directory.  Does not wait for other
// processes.  Creates and removes the file; what had the name before is removed, too.
// On POSIX, another user's file of that name may not be removable or writable.  Then
// the permissions of the directory decide.
bool platform_can_create(const char *dir, const char *name);
// Open for writing or appending.  `mode` is as in fopen, but "r+" and "r+b" open an
// existing file for writing only and do not empty it.  A pipe does not open: it could
// block the caller, or end the process when its reader closes it.  A file is emptied
// only if it opens.
FILE *platform_open_to_write(const char *path, const char *mode);

// As fread and fwrite.  platform_write writes through to the system at once; nothing
// else may be buffered in the stream.
size_t platform_read(FILE *file, char *to, size_t size);
bool platform_write(FILE *file, const char *from, size_t size);
bool platform_rewind(FILE *file);
bool platform_truncate(FILE *file); // at the current position
// As fsync, after fflush.  True if the file is not on a disk.
bool platform_sync(FILE *file);

// The long form of a path.  False if there is none, or if it does not fit.
bool platform_long_path(const char *path, char *to, size_t size);

// The directory for temporary files, with a "/" at its end.  On POSIX, the first call
// creates one for this process, with access for its user only: in a shared directory,
// other users could plant a file of a known name.  It is removed when the process
// exits, if it is empty then.  A call creates it again if it was removed, and a new
// one in a child process.
bool platform_temp_dir(char *to, size_t size);
// Lock that directory against other processes, where they share it.  Returns -1 after
// waiting for 10 seconds, and 0 if no lock is needed or possible.
intptr_t platform_lock_temp_dir();
void platform_unlock_temp_dir(intptr_t lock); // 0 and -1 are ignored

// Whether two paths lead to one file on disk.
bool platform_same_file(const char *first, const char *second);

bool platform_remove_file(const char *path); // never a directory
// Rename a file.  Fails with EEXIST if the new path exists.  Changing only the case of
// a name works on a file system that ignores case.
bool platform_rename(const char *old_path, const char *new_path);
