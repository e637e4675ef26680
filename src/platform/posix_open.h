// What the sources for POSIX share.

#pragma once

#include <cerrno>
#include <sys/types.h>

// The result of a system call that is made again when a signal interrupts it.
template <typename Call> auto posix_retry(const Call &call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

// As open, in spite of signals, and closed in programs that the process becomes.
// A descriptor of a closed standard stream is not used: what is printed there
// later would go into the file.  A lease of a file server that keeps a regular
// file from being opened without blocking is waited for.
int posix_open(const char *path, int flags, mode_t mode = 0);
// The same for writing.  A pipe does not open (ENXIO).
int posix_open_to_write(const char *path, int flags, bool *has_text);

// As fsync, in spite of signals; true also where there is nothing to sync.
bool posix_sync(int file);
