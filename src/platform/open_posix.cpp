#include "platform/open_posix.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

static bool is_regular(const char *path)
{
    struct stat status;
    return posix_retry([&] { return stat(path, &status); }) == 0 && S_ISREG(status.st_mode);
}

// Waits if a lease of a file server keeps a regular file from being opened without
// blocking.
static int open_retrying(const char *path, int flags, mode_t mode)
{
    for (;;) {
        int file = posix_retry([&] { return open(path, flags, mode); });
        if (file >= 0 || errno != EAGAIN)
            return file;
        if ((flags & O_NONBLOCK) == 0 || !is_regular(path)) {
            errno = EAGAIN;
            return -1;
        }
        flags &= ~O_NONBLOCK;
    }
}

// One system call instead of three.  False also if an open stream reports an error or a
// hangup.
static bool standard_descriptors_are_open()
{
    pollfd streams[] = {{STDIN_FILENO, 0, 0}, {STDOUT_FILENO, 0, 0}, {STDERR_FILENO, 0, 0}};
    return poll(streams, 3, 0) == 0;
}

// Open /dev/null on the free descriptors up to that of standard error, so that no file
// gets them.  Returns how many.  They are the first entries of `reserved`.
static int reserve_standard_descriptors(int (&reserved)[STDERR_FILENO + 1])
{
    int count = 0;
    if (standard_descriptors_are_open())
        return 0;
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (fcntl(stream, F_GETFD) < 0)
            reserved[count++] = open("/dev/null", O_RDWR | O_CLOEXEC);
    return count;
}

static int open_above_standard(const char *path, int flags, mode_t mode)
{
    int reserved[STDERR_FILENO + 1];
    int count = reserve_standard_descriptors(reserved);
    int file = open_retrying(path, flags, mode);
    int reason = errno;
    while (count > 0)
        close(reserved[--count]);
    errno = reason;
    return file;
}

// For reading, the descriptor of a standard stream is harmless for a moment: nothing can
// be printed to it.
int posix_open(const char *path, int flags, mode_t mode)
{
    flags |= O_CLOEXEC;
    if ((flags & O_ACCMODE) != O_RDONLY)
        return open_above_standard(path, flags, mode);
    int file = open_retrying(path, flags, mode);
    if (file < 0 || file > STDERR_FILENO)
        return file;
    close(file);
    return open_above_standard(path, flags, mode);
}

// Opened without blocking, so that a pipe without a reader does not block the process.
int posix_open_to_write(const char *path, int flags, bool *has_text)
{
    int file = posix_open(path, O_WRONLY | O_NONBLOCK | flags, 0666);
    if (file < 0)
        return -1;
    struct stat status;
    bool is_known = posix_retry([&] { return fstat(file, &status); }) == 0;
    if (is_known && !S_ISFIFO(status.st_mode)) {
        *has_text = S_ISREG(status.st_mode) && status.st_size > 0;
        return file;
    }
    int reason = is_known ? ENXIO : errno; // as for a pipe without a reader
    close(file);
    errno = reason;
    return -1;
}

bool posix_sync(int file)
{
    return posix_retry([&] { return fsync(file); }) == 0 || errno == EINVAL || errno == ENOTSUP ||
           errno == EROFS;
}
