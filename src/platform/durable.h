// Changing a file so that a kill, a power failure or a full disk leaves either its old
// or its new contents: locks, syncing, and replacing one file with another.  As in
// platform.h, true means success, and errno says why something failed.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

// A monotonic clock, in milliseconds.
int64_t platform_clock();

// Lock a file against every process that locks it with this function.  Waits for them
// until `deadline` on platform_clock.  Returns -1 if the file does not open for
// appending (ENOENT if it does not exist) or the wait timed out (ETIMEDOUT).  If the
// file system has no locks, the file is not locked, and the call succeeds.
intptr_t platform_lock_file(const char *path, int64_t deadline);
void platform_unlock(intptr_t lock);

// Identifies a file and the version of its contents, by what the system reports.  All
// zero if the path does not lead to a regular file.
struct file_state {
    uint64_t device, number, size;
    int64_t changed[4]; // times
};
bool platform_file_state(const char *path, file_state *state);
bool platform_stream_state(FILE *file, file_state *state);
bool platform_same_state(const file_state *first, const file_state *second);

// The path with the symbolic links of its last component followed.  The file need not
// exist.  False, also if the result does not fit.
bool platform_follow_links(const char *path, char *to, size_t size);

// A new file that is to replace another.  `path` is empty if there is none.  `stream`
// is null once it is closed.
struct new_file {
    FILE *stream;
    char path[4160]; // the longest path of a system, and a name of its own
};

enum new_file_kind {
    NEW_FILE,         // with default permissions
    NEW_FILE_PRIVATE, // readable by no more users than another; same owner if possible
    NEW_FILE_EXACT    // with all properties of another
};

// Create an empty file with a unique name in the directory of `path`.  Open it for
// writing; `mode` is "w" or "wb", as in fopen.  `like` is the other file that `kind`
// refers to.  NEW_FILE_EXACT fails with EPERM if replacing that file would lose its
// other hard links, owner, access list or attributes.
bool platform_create_in_dir_of(new_file *created, const char *path, new_file_kind kind,
                               const char *like, const char *mode);
// Sync the file and its directory, and close the file.
bool platform_sync_and_close(new_file *created);
// Replace `path` with the closed file, atomically.
bool platform_replace(new_file *created, const char *path);
// Create `path` by renaming the closed file.  Fails with EEXIST if `path` exists.
bool platform_create_from(new_file *created, const char *path);
// Close and remove a file that was not renamed.  Keeps errno.
void platform_discard(new_file *created);
// Whether errno says that the directory or the file system prevents replacing a file
// that may still be writable.
bool platform_must_overwrite();

// Sync the directory of a path.
bool platform_sync_dir_of(const char *path);

// The path of a safety copy of a file, in a directory for files that survive a restart.
// The same in every process of the user.  False, also if it does not fit.
bool platform_lasting_copy_path(const char *path, char *to, size_t size);
// Whether `copy` can be a safety copy of `path` that a process of the user left: in a
// shared directory, another user may have created a file of that name.
bool platform_is_own_copy(const char *copy, const char *path);
