#include "platform/posix_open.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static bool is_regular(const char *path)
{
    struct stat status;
    return stat(path, &status) == 0 && S_ISREG(status.st_mode);
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

int posix_open(const char *path, int flags, mode_t mode)
{
    int file = open_retrying(path, flags | O_CLOEXEC, mode);
    if (file < 0 || file > STDERR_FILENO)
        return file;
    int moved = fcntl(file, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    int reason = errno;
    close(file);
    errno = reason;
    return moved;
}

// Opening without blocking keeps a pipe without a reader from holding the process.
int posix_open_to_write(const char *path, int flags, bool *is_regular)
{
    int file = posix_open(path, O_WRONLY | O_NONBLOCK | flags, 0666);
    if (file < 0)
        return -1;
    struct stat status;
    bool is_known = fstat(file, &status) == 0;
    if (is_known && !S_ISFIFO(status.st_mode)) {
        *is_regular = S_ISREG(status.st_mode);
        return file;
    }
    close(file);
    errno = ENXIO; // what a pipe without a reader gives
    return -1;
}

bool posix_sync(int file)
{
    return posix_retry([&] { return fsync(file); }) == 0 || errno == EINVAL || errno == ENOTSUP ||
           errno == EROFS;
}
