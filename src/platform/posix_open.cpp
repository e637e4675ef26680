#include "platform/posix_open.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

static bool is_regular(const char *path)
{
    struct stat status;
    return posix_retry([&] { return stat(path, &status); }) == 0 && S_ISREG(status.st_mode);
}

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

// One call, which waits for nothing.
static bool standard_descriptors_are_open()
{
    pollfd streams[] = {{STDIN_FILENO, 0, 0}, {STDOUT_FILENO, 0, 0}, {STDERR_FILENO, 0, 0}};
    return poll(streams, 3, 0) == 0;
}

// Take the free descriptors up to that of standard error, so that no file gets them.
// Returns how many: they are the first of `taken`.
static int take_standard_descriptors(int (&taken)[STDERR_FILENO + 1])
{
    int count = 0;
    if (standard_descriptors_are_open())
        return 0;
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (fcntl(stream, F_GETFD) < 0)
            taken[count++] = open("/dev/null", O_RDWR | O_CLOEXEC);
    return count;
}

static int open_above_standard(const char *path, int flags, mode_t mode)
{
    int taken[STDERR_FILENO + 1];
    int count = take_standard_descriptors(taken);
    int file = open_retrying(path, flags, mode);
    int reason = errno;
    while (count > 0)
        close(taken[--count]);
    errno = reason;
    return file;
}

// Nobody prints to a descriptor that is open for reading.
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

// Opening without blocking keeps a pipe without a reader from holding the process.
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
    int reason = is_known ? ENXIO : errno; // what a pipe without a reader gives
    close(file);
    errno = reason;
    return -1;
}

bool posix_sync(int file)
{
    return posix_retry([&] { return fsync(file); }) == 0 || errno == EINVAL || errno == ENOTSUP ||
           errno == EROFS;
}
