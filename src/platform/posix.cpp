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

// Opening without blocking keeps a pipe without a writer from holding the
// process.  *is_regular tells a regular file from a pipe or device.
static int open_file(const char *path, bool *is_regular)
{
    int file = posix_open(path, O_RDONLY | O_NONBLOCK);
    if (file < 0)
        return -1;
    struct stat status;
    bool is_known = posix_retry([&] { return fstat(file, &status); }) == 0;
    if (is_known && !S_ISDIR(status.st_mode)) {
        *is_regular = S_ISREG(status.st_mode);
        return file;
    }
    int reason = is_known ? EISDIR : errno;
    close(file);
    errno = reason;
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

bool platform_is_readable_file(const char *path)
{
    bool is_regular = false;
    int file = open_file(path, &is_regular);
    if (file < 0)
        return false;
    close(file);
    return true;
}

// Something of that name that can't be removed may be another user's.
static bool can_create_but_for(const char *path, const char *dir)
{
    struct stat status;
    int file =
        posix_retry([&] { return open(path, O_WRONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC); });
    if (file >= 0) {
        close(file);
        return true;
    }
    bool is_own_dir = posix_retry([&] { return lstat(path, &status); }) == 0 &&
                      S_ISDIR(status.st_mode) && status.st_uid == geteuid();
    return !is_own_dir &&
           posix_retry([&] { return faccessat(AT_FDCWD, dir, W_OK | X_OK, AT_EACCESS); }) == 0;
}

// A file of that name is removed, and another created: nobody's text is emptied and
// no link followed, as anybody may put one into a common directory.
bool platform_can_create(const char *dir, const char *name)
{
    constexpr int most_tries = 1000; // others may probe at the same time
    char path[PATH_MAX];
    if (!text_join(path, {dir, "/", name}))
        return false;
    for (int tries = 0; tries < most_tries; ++tries) {
        int file = posix_open(path, O_WRONLY | O_CREAT | O_EXCL, 0666);
        if (file >= 0) {
            close(file);
            platform_remove_file(path);
            return true;
        }
        if (errno != EEXIST)
            return false;
        if (!platform_remove_file(path) && errno != ENOENT)
            return can_create_but_for(path, dir);
    }
    return false; // not reached: nobody is that quick
}

// The file is emptied when nothing can fail any more.
FILE *platform_open_to_write(const char *path, const char *mode)
{
    bool appends = *mode == 'a', empties = *mode == 'w', has_text = false;
    int flags = appends ? O_APPEND : 0;
    int file = posix_open_to_write(path, flags | (appends || empties ? O_CREAT : 0), &has_text);
    if (file < 0)
        return nullptr;
    FILE *stream = fcntl(file, F_SETFL, flags) == 0 ? fdopen(file, appends ? "a" : "w") : nullptr;
    if (stream == nullptr)
        close(file);
    if (stream == nullptr || !empties || !has_text || platform_cut(stream))
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

bool platform_rewind(FILE *file)
{
    return lseek(fileno(file), 0, SEEK_SET) == 0 || errno == ESPIPE;
}

// A device has no length.
bool platform_cut(FILE *file)
{
    struct stat status;
    const int number = fileno(file);
    if (posix_retry([&] { return fstat(number, &status); }) != 0)
        return false;
    if (!S_ISREG(status.st_mode))
        return true;
    const off_t length = lseek(number, 0, SEEK_CUR);
    return length >= 0 && posix_retry([&] { return ftruncate(number, length); }) == 0;
}

bool platform_sync(FILE *file)
{
    return fflush(file) == 0 && posix_sync(fileno(file));
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
    return posix_retry([&] { return mkdir(temporary_dir, 0700); }) == 0 ||
           (posix_retry([&] { return lstat(temporary_dir, &status); }) == 0 &&
            S_ISDIR(status.st_mode) && status.st_uid == geteuid());
}

// A relative TMPDIR would lead elsewhere after a change of directory, and "\"
// is turned in all paths.
bool platform_temporary_dir(char *to, size_t size)
{
    constexpr size_t longest_rest = 40; // the directory's own name, and that of a file in it
    const char *parent = getenv("TMPDIR");
    bool is_good = parent != nullptr && parent[0] == '/' && strchr(parent, '\\') == nullptr &&
                   strlen(parent) + longest_rest < size;
    bool is_made = temporary_dir_is_there() || (is_good && make_temporary_dir(parent)) ||
                   make_temporary_dir("/tmp");
    int length = snprintf(to, size, "%s/", temporary_dir);
    return is_made && length >= 0 && static_cast<size_t>(length) < size;
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
    return posix_retry([&] { return stat(first, &one); }) == 0 &&
           posix_retry([&] { return stat(second, &other); }) == 0 && one.st_dev == other.st_dev &&
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
