#include "system_calls.h"

#include <cerrno>
#include <cstdarg>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace calls {

Lines made;
std::function<int(const std::string &call)> refuse;

} // namespace calls

static bool is_refused(const std::string &call)
{
    if (!calls::refuse)
        return false;
    calls::made.push_back(call);
    errno = calls::refuse(call);
    return errno != 0;
}

static std::string path_of(int file)
{
    std::error_code none;
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file), none).string();
}

extern "C" {
int __real_open(const char *path, int flags, ...);
ssize_t __real_write(int file, const void *from, size_t size);
int __real_fsync(int file);
int __real_ftruncate(int file, off_t size);
int __real_rename(const char *from, const char *to);
int __real_renameat2(int, const char *from, int, const char *to, unsigned flags);
int __real_flock(int file, int operation);
int __real_mkdir(const char *path, mode_t mode);
int __real_nanosleep(const timespec *time, timespec *left);
int __real_clock_gettime(clockid_t clock, timespec *now);

int __wrap_open(const char *path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    const char *kind = (flags & O_NONBLOCK) != 0 ? "poll " : "open ";
    return is_refused(kind + std::string(path)) ? -1 : __real_open(path, flags, mode);
}
ssize_t __wrap_write(int file, const void *from, size_t size)
{
    return is_refused("write " + path_of(file)) ? -1 : __real_write(file, from, size);
}
int __wrap_fsync(int file)
{
    return is_refused("fsync " + path_of(file)) ? -1 : __real_fsync(file);
}
int __wrap_ftruncate(int file, off_t size)
{
    return is_refused("ftruncate " + path_of(file)) ? -1 : __real_ftruncate(file, size);
}
int __wrap_rename(const char *from, const char *to)
{
    return is_refused("rename " + std::string(from) + " " + to) ? -1 : __real_rename(from, to);
}
int __wrap_renameat2(int, const char *from, int, const char *to, unsigned flags)
{
    if (is_refused("rename " + std::string(from) + " " + to))
        return -1;
    return __real_renameat2(AT_FDCWD, from, AT_FDCWD, to, flags);
}
int __wrap_flock(int file, int operation)
{
    return is_refused("flock " + path_of(file)) ? -1 : __real_flock(file, operation);
}

int __wrap_mkdir(const char *path, mode_t mode)
{
    return is_refused("mkdir " + std::string(path)) ? -1 : __real_mkdir(path, mode);
}

// While calls are seen, a wait takes no time but by the clock.
static long waited; // milliseconds
int __wrap_nanosleep(const timespec *time, timespec *left)
{
    if (!calls::refuse)
        return __real_nanosleep(time, left);
    waited += time->tv_nsec / 1000000;
    return 0;
}
int __wrap_clock_gettime(clockid_t clock, timespec *now)
{
    if (!calls::refuse)
        return __real_clock_gettime(clock, now);
    *now = {waited / 1000, waited % 1000 * 1000000};
    return 0;
}
}
