#include "platform/platform.h"
#include "platform/posix_open.h"
#include "text/text.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

bool platform_current_dir(char *to, size_t width)
{
    return getcwd(to, width) != nullptr;
}

// The last "." can be looked up only in a directory, and only by those who may
// enter it.
bool platform_can_enter(const char *path)
{
    char itself[PATH_MAX];
    struct stat status;
    return *path != '\0' && text_join(itself, {path, "/."}) &&
           posix_retry([&] { return stat(itself, &status); }) == 0;
}

bool platform_make_dir(const char *path)
{
    return posix_retry([&] { return mkdir(path, 0777); }) == 0;
}

// Opening without blocking keeps a pipe without a writer from holding the
// process.  *is_regular tells a regular file from a pipe or device.
static int open_file(const char *path, bool *is_regular)
{
    int file = posix_open(path, O_RDONLY | O_NONBLOCK);
    if (file < 0)
        return -1;
    struct stat status;
    if (fstat(file, &status) == 0 && !S_ISDIR(status.st_mode)) {
        *is_regular = S_ISREG(status.st_mode);
        return file;
    }
    close(file);
    errno = EISDIR;
    return -1;
}

// Whether a device gives bytes as long as it is read.  A terminal is read as far
// as somebody types.
static bool is_endless_device(int file)
{
    struct stat status;
    char first;
    if (fstat(file, &status) != 0 || !S_ISCHR(status.st_mode) || isatty(file) != 0)
        return false;
    return posix_retry([&] { return read(file, &first, 1); }) == 1;
}

FILE *platform_open_to_read(const char *path)
{
    bool is_regular = false;
    int file = open_file(path, &is_regular);
    if (file < 0)
        return nullptr;
    if (!is_regular)
        fcntl(file, F_SETFL, 0); // a pipe that has a writer is waited for
    bool is_usable = is_regular || !is_endless_device(file);
    FILE *stream = is_usable ? fdopen(file, "r") : nullptr;
    if (stream == nullptr)
        close(file);
    if (!is_usable)
        errno = EINVAL;
    return stream;
}

FILE *platform_open_to_read_soon(const char *path)
{
    return platform_open_to_read(path); // nobody can keep a file from being opened
}

bool platform_opens_for_reading(const char *path)
{
    bool is_regular = false;
    int file = open_file(path, &is_regular);
    if (file < 0)
        return false;
    close(file);
    return true;
}

// What a link leads to is left alone: in a directory that many may write to,
// anybody could have made it.
static bool create_file(const char *path)
{
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOFOLLOW;
    int file = posix_open(path, flags, 0666);
    if (file < 0 && errno == ELOOP && platform_remove_file(path))
        file = posix_open(path, flags, 0666);
    if (file < 0)
        return false;
    close(file);
    return true;
}

// Another user's file of that name may be gone again when it is looked for.
static bool may_be_of_another_user(const char *path)
{
    struct stat status;
    return (errno == EACCES || errno == EPERM) &&
           (lstat(path, &status) == 0 ? status.st_uid != geteuid() : errno == ENOENT);
}

bool platform_can_create(const char *dir, const char *name)
{
    char path[PATH_MAX];
    if (!text_join(path, {dir, "/", name}))
        return false;
    if (create_file(path)) {
        platform_remove_file(path);
        return true;
    }
    return may_be_of_another_user(path) && faccessat(AT_FDCWD, dir, W_OK | X_OK, AT_EACCESS) == 0;
}

// The file is emptied when nothing can fail any more.
FILE *platform_open_to_write(const char *path, const char *mode)
{
    bool appends = *mode == 'a', empties = *mode == 'w', is_regular = false;
    int flags = appends ? O_APPEND : 0;
    int file = posix_open_to_write(path, flags | (appends || empties ? O_CREAT : 0), &is_regular);
    if (file < 0)
        return nullptr;
    FILE *stream = fcntl(file, F_SETFL, flags) == 0 ? fdopen(file, appends ? "a" : "w") : nullptr;
    if (stream == nullptr)
        close(file);
    if (stream == nullptr || !empties || !is_regular || platform_empty(stream))
        return stream;
    int reason = errno;
    fclose(stream);
    errno = reason;
    return nullptr;
}

bool platform_write(FILE *file, const char *from, size_t size)
{
    while (size > 0) {
        ssize_t length = posix_retry([&] { return write(fileno(file), from, size); });
        if (length < 0)
            return false;
        from += length;
        size -= static_cast<size_t>(length);
    }
    return true;
}

bool platform_empty(FILE *file)
{
    struct stat status;
    if (posix_retry([&] { return ftruncate(fileno(file), 0); }) != 0 &&
        (fstat(fileno(file), &status) != 0 || S_ISREG(status.st_mode))) // a device has no length
        return false;
    lseek(fileno(file), 0, SEEK_SET);
    return true;
}

bool platform_sync(FILE *file)
{
    return fflush(file) == 0 && posix_sync(fileno(file));
}

bool platform_sync_file(const char *path)
{
    int file = posix_open(path, O_RDONLY | O_NONBLOCK);
    if (file < 0)
        return false;
    bool is_done = posix_sync(file);
    int reason = errno;
    close(file);
    errno = reason;
    return is_done;
}

bool platform_long_path(const char *, char *, size_t)
{
    return false; // no system of this family shortens names
}

static char temporary_dir[PATH_MAX]; // empty: none could be made
static pid_t temporary_dir_owner;

static void remove_temporary_dir()
{
    if (getpid() == temporary_dir_owner) // a child that ends leaves it alone
        rmdir(temporary_dir);            // does nothing while a file is in it
}

static bool make_temporary_dir(const char *parent)
{
    int length = snprintf(temporary_dir, sizeof temporary_dir, "%s/vek-XXXXXX", parent);
    if (length > 0 && static_cast<size_t>(length) < sizeof temporary_dir &&
        mkdtemp(temporary_dir) != nullptr) {
        if (temporary_dir_owner == 0) // else the removal was inherited
            atexit(remove_temporary_dir);
        temporary_dir_owner = getpid();
        return true;
    }
    temporary_dir[0] = '\0';
    return false;
}

// A long session may see its directory cleaned away.
static bool temporary_dir_is_there()
{
    struct stat status;
    if (temporary_dir_owner != getpid() || temporary_dir[0] == '\0')
        return false;
    return mkdir(temporary_dir, 0700) == 0 ||
           (lstat(temporary_dir, &status) == 0 && S_ISDIR(status.st_mode) &&
            status.st_uid == geteuid());
}

// A relative TMPDIR would lead elsewhere after a change of directory, and "\"
// is turned in all paths.
bool platform_temporary_dir(char *to, size_t width)
{
    const char *parent = getenv("TMPDIR");
    bool is_good = parent != nullptr && parent[0] == '/' && strchr(parent, '\\') == nullptr;
    bool is_made = temporary_dir_is_there() || (is_good && make_temporary_dir(parent)) ||
                   make_temporary_dir("/tmp");
    int length = snprintf(to, width, "%s/", temporary_dir);
    return is_made && length >= 0 && static_cast<size_t>(length) < width;
}

bool platform_lasting_dir(char *to, size_t width)
{
    return text_copy(to, width, "/var/tmp/");
}

intptr_t platform_lock_temp_dir()
{
    return 0;
}

void platform_unlock_temp_dir(intptr_t)
{
}

bool platform_same_file(const char *first, const char *second)
{
    struct stat one, other;
    return stat(first, &one) == 0 && stat(second, &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

bool platform_remove_file(const char *path)
{
    return posix_retry([&] { return unlink(path); }) == 0;
}

// The file itself in other letters, on a file system that folds case.
static bool differ_in_case_alone(const char *old_path, const char *new_path)
{
    struct stat one, other;
    return strcasecmp(old_path, new_path) == 0 && strcmp(old_path, new_path) != 0 &&
           lstat(old_path, &one) == 0 && lstat(new_path, &other) == 0 &&
           one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_nlink == 1;
}

bool platform_rename(const char *old_path, const char *new_path)
{
    if (differ_in_case_alone(old_path, new_path))
        return rename(old_path, new_path) == 0; // not reached: no file system of ours folds case
#ifdef RENAME_NOREPLACE
    if (posix_retry([&] {
            return renameat2(AT_FDCWD, old_path, AT_FDCWD, new_path, RENAME_NOREPLACE);
        }) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false; // else this file system does not know how
#endif
    if (posix_retry([&] { return link(old_path, new_path); }) == 0)
        return platform_remove_file(old_path);
    struct stat status;
    if (errno == EEXIST || lstat(new_path, &status) == 0) {
        errno = EEXIST;
        return false;
    }
    return posix_retry([&] { return rename(old_path, new_path); }) == 0;
}
