#include "platform/open_posix.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

bool platform_current_dir(char *to, size_t size)
{
    return getcwd(to, size) != nullptr;
}

// Looking up "." in a path succeeds only if the path is a directory with search
// permission.
static bool dir_at_is_accessible(int dir, const char *path)
{
    char dot_path[PATH_MAX];
    struct stat status;
    return *path != '\0' && text_join(dot_path, {path, "/."}) &&
           posix_retry([&] { return fstatat(dir, dot_path, &status, 0); }) == 0;
}

bool platform_dir_is_accessible(const char *path)
{
    return dir_at_is_accessible(AT_FDCWD, path);
}

bool platform_make_dir(const char *path)
{
    return posix_retry([&] { return mkdir(path, 0777); }) == 0;
}

// Fails if a standard stream is closed: opendir takes the lowest free descriptor.
open_dir *platform_open_dir(const char *path)
{
    DIR *dir = nullptr;
    posix_retry([&] { return (dir = opendir(path)) == nullptr ? -1 : 0; });
    if (dir != nullptr && dirfd(dir) <= STDERR_FILENO) {
        closedir(dir);
        dir = nullptr;
    }
    return reinterpret_cast<open_dir *>(dir);
}

static DIR *stream_of(open_dir *dir)
{
    return reinterpret_cast<DIR *>(dir);
}

// A name that does not fit becomes the empty string, which no caller looks for.
bool platform_read_dir(open_dir *dir, char *name, size_t size)
{
    errno = 0;
    const dirent *entry = readdir(stream_of(dir));
    if (entry != nullptr)
        text_copy(name, size, entry->d_name);
    return entry != nullptr;
}

bool platform_dir_is_accessible_at(open_dir *dir, const char *path)
{
    return dir_at_is_accessible(dirfd(stream_of(dir)), path);
}

bool platform_make_dir_at(open_dir *dir, const char *path)
{
    return posix_retry([&] { return mkdirat(dirfd(stream_of(dir)), path, 0777); }) == 0;
}

void platform_close_dir(open_dir *dir)
{
    closedir(stream_of(dir));
}
