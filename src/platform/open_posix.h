// What the sources for POSIX share.

#pragma once

#include <cerrno>
#include <sys/types.h>

// The result of a system call, which is repeated while a signal interrupts it.
template <typename Call> auto posix_retry(const Call &call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

// As open, repeated while a signal interrupts it; with O_CLOEXEC.  Never returns the
// descriptor of a closed standard stream: later output to that stream would go into
// the file.  With O_NONBLOCK, waits if a lease of a file server blocks a regular file.
int posix_open(const char *path, int flags, mode_t mode = 0);
// The same for writing.  A pipe does not open (ENXIO).  *has_text becomes whether it
// is a regular file that is not empty.
int posix_open_to_write(const char *path, int flags, bool *has_text);

// As fsync, repeated while a signal interrupts it.  True if there is nothing to sync, as
// on a pipe.
bool posix_sync(int file);
