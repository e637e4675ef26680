#include "system_calls.h"

#include <cerrno>
#include <cstdarg>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace calls {

std::function<int(const std::string &call)> error_for;

} // namespace calls

static bool fails(const std::string &call)
{
    if (!calls::error_for)
        return false;
    errno = calls::error_for(call);
    return errno != 0;
}

static std::string path_of(int file)
{
    std::error_code none;
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file), none).string();
}

// Wraps a function of the C library.  `call` is the rest of the recorded call.
#define WRAP(result, name, parameters, arguments, call)                                            \
    result __real_##name parameters;                                                               \
    result __wrap_##name parameters                                                                \
    {                                                                                              \
        return fails(std::string(#name " ") + (call)) ? -1 : __real_##name arguments;              \
    }

extern "C" {
WRAP(ssize_t, write, (int file, const void *from, size_t size), (file, from, size), path_of(file))
WRAP(int, fsync, (int file), (file), path_of(file))
WRAP(int, ftruncate, (int file, off_t size), (file, size), path_of(file))
WRAP(int, flock, (int file, int operation), (file, operation), path_of(file))
WRAP(int, fstat, (int file, struct stat *status), (file, status), path_of(file))
WRAP(int, fchmod, (int file, mode_t mode), (file, mode), path_of(file))
WRAP(int, fchown, (int file, uid_t user, gid_t group), (file, user, group), path_of(file))
WRAP(int, fremovexattr, (int file, const char *name), (file, name), path_of(file))
WRAP(int, stat, (const char *path, struct stat *status), (path, status), path)
WRAP(int, lstat, (const char *path, struct stat *status), (path, status), path)
WRAP(int, fstatat, (int dir, const char *path, struct stat *status, int flags),
     (dir, path, status, flags), path)
WRAP(ssize_t, readlink, (const char *path, char *to, size_t size), (path, to, size), path)
WRAP(ssize_t, listxattr, (const char *path, char *to, size_t size), (path, to, size), path)
WRAP(int, mkdir, (const char *path, mode_t mode), (path, mode), path)
WRAP(int, mkdirat, (int dir, const char *path, mode_t mode), (dir, path, mode),
     path_of(dir) + "/" + path)
WRAP(int, unlink, (const char *path), (path), path)
WRAP(int, link, (const char *from, const char *to), (from, to), from + std::string(" ") + to)
WRAP(int, rename, (const char *from, const char *to), (from, to), from + std::string(" ") + to)

int __real_open(const char *path, int flags, ...);
char *__real_mkdtemp(char *path);
int __real_renameat2(int, const char *from, int, const char *to, unsigned flags);
int __real_nanosleep(const timespec *time, timespec *left);
int __real_clock_gettime(clockid_t clock, timespec *now);

int __wrap_open(const char *path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    const char *kind = (flags & O_NONBLOCK) != 0 ? "poll " : "open ";
    return fails(kind + std::string(path)) ? -1 : __real_open(path, flags, mode);
}
char *__wrap_mkdtemp(char *path)
{
    return fails("mkdtemp " + std::string(path)) ? nullptr : __real_mkdtemp(path);
}
int __wrap_renameat2(int, const char *from, int, const char *to, unsigned flags)
{
    if (fails("rename " + std::string(from) + " " + to))
        return -1;
    return __real_renameat2(AT_FDCWD, from, AT_FDCWD, to, flags);
}

// While calls are recorded, a wait only advances the clock.
static long waited; // milliseconds
int __wrap_nanosleep(const timespec *time, timespec *left)
{
    if (!calls::error_for)
        return __real_nanosleep(time, left);
    waited += time->tv_nsec / 1000000;
    return 0;
}
int __wrap_clock_gettime(clockid_t clock, timespec *now)
{
    if (!calls::error_for)
        return __real_clock_gettime(clock, now);
    *now = {waited / 1000, waited % 1000 * 1000000};
    return 0;
}
}
