// Changing a file so that a kill, a power cut or a full disk leaves its old text
// or its new one: locks, syncing, and replacing one file by another.  As in
// platform.h, true means success, and errno says why something failed.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

// A clock that only goes forward, in milliseconds.
int64_t platform_clock();

// Lock a file against every process that locks it in this way, and wait for them
// up to a time of that clock.  Returns -1 if the file does not open for appending
// (ENOENT: there is none) or if the wait was in vain (ETIMEDOUT).  Where the file
// system knows no locks, nothing is locked.
intptr_t platform_lock_file(const char *path, int64_t deadline);
void platform_unlock(intptr_t lock);

// Which file a path leads to and which text it has, as far as the system shows;
// all zero for what is no regular file.
struct file_state {
    uint64_t device, number, size;
    int64_t changed[4]; // times
};
bool platform_file_state(const char *path, file_state *state);
bool platform_stream_state(FILE *file, file_state *state);
bool platform_same_state(const file_state *first, const file_state *second);

// The file that a path leads to, symbolic links followed, also when it does not
// exist.  False, also if that has no room.
bool platform_follow_links(const char *path, char *to, size_t size);

// A new file that is to take the place of another.  `path` is empty while there
// is none; `stream` is null once it is closed.
struct new_file {
    FILE *stream;
    char path[4096];
};

enum new_file_kind {
    NEW_FILE,         // with the mode of any new file
    NEW_FILE_PRIVATE, // as private as another, and its owner's where that is allowed
    NEW_FILE_EXACT    // in all that another has
};

// Create an empty file with a name of its own in the directory of `path`, and
// open it for writing with fopen's mode "w" or "wb".  `like` is the other file
// of `kind`.  NEW_FILE_EXACT fails with EPERM where replacing that would lose
// its further names, owner, access list or attributes.
bool platform_create_beside(new_file *made, const char *path, new_file_kind kind, const char *like,
                            const char *mode);
// Put the file, and its entry in the directory, on the disk, and close it.
bool platform_finish(new_file *made);
// Let the finished file take the place of `path` in one step.
bool platform_replace(new_file *made, const char *path);
// The same if there is no file there; else EEXIST.
bool platform_place(new_file *made, const char *path);
// Close and remove a file that has not taken its place.
void platform_discard(new_file *made);
// Whether errno says that the directory does not let a file be replaced that may
// still be written to.
bool platform_must_overwrite();

// Put the entries of the directory of a path on the disk.
bool platform_sync_dir_of(const char *path);

// The name of a copy of a file in a directory for files that outlast a power cut,
// the same for every process of the user's.  False, also if it has no room.
bool platform_lasting_copy_path(const char *path, char *to, size_t size);
// Whether a copy of a file can be one that the user's processes have left: another
// user may have put something of that name into a common directory.
bool platform_is_own_copy(const char *copy, const char *path);
