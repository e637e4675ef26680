#include "platform/open_posix.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

// Open for reading, without blocking on a pipe without a writer.  A directory does not
// open.  *is_regular becomes false for a pipe or device.
static int open_nonblocking(const char *path, bool *is_regular)
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

// Whether a device never reaches an end of file.  A terminal does, when the user types
// it.
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
    int file = open_nonblocking(path, &is_regular);
    if (file < 0)
        return nullptr;
    if (!is_regular)
        fcntl(file, F_SETFL, 0); // wait for data in a pipe that has a writer
    bool is_usable = is_regular || !is_endless_device(file);
    FILE *stream = is_usable ? fdopen(file, "r") : nullptr;
    if (stream == nullptr)
        close(file);
    if (!is_usable)
        errno = EINVAL;
    return stream;
}

FILE *platform_open_to_read_retrying(const char *path)
{
    return platform_open_to_read(path); // no other process can block an open
}

bool platform_is_readable_file(const char *path)
{
    bool is_regular = false;
    int file = open_nonblocking(path, &is_regular);
    if (file < 0)
        return false;
    close(file);
    return true;
}

// For something that exists and can't be removed, such as another user's file.  Whether
// it can be written, or else whether the directory allows creating files.  False for a
// directory that this user owns.
static bool can_write_existing(const char *path, const char *dir)
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

// What has the name is removed, not opened: a link of that name, which any user can put
// into a shared directory, is not followed, and no file is emptied.
bool platform_can_create(const char *dir, const char *name)
{
    constexpr int max_retries = 1000; // other processes may check at the same time
    char path[PATH_MAX];
    if (!text_join(path, {dir, "/", name}))
        return false; // not reached: paths of databases are shorter
    for (int retries = 0;; ++retries) {
        int file = posix_open(path, O_WRONLY | O_CREAT | O_EXCL, 0666);
        if (file >= 0) {
            close(file);
            platform_remove_file(path);
            return true;
        }
        if (errno != EEXIST)
            return false;
        if ((!platform_remove_file(path) && errno != ENOENT) || retries == max_retries)
            return can_write_existing(path, dir);
    }
}

// The file is emptied last, when nothing else can fail.
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
    if (stream == nullptr || !empties || !has_text || platform_truncate(stream))
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

// Only regular files have a length.
bool platform_truncate(FILE *file)
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
    return false; // POSIX has no short names
}

static char temp_dir[PATH_MAX]; // empty if it could not be created
static pid_t temp_dir_owner;

static void remove_temp_dir()
{
    if (getpid() == temp_dir_owner) // not in a child process
        rmdir(temp_dir);            // fails if it is not empty
}

static bool create_temp_dir(const char *parent)
{
    int length = snprintf(temp_dir, sizeof temp_dir, "%s/vek-XXXXXX", parent);
    if (length > 0 && static_cast<size_t>(length) < sizeof temp_dir &&
        mkdtemp(temp_dir) != nullptr) {
        if (temp_dir_owner == 0) // otherwise the handler is inherited
            atexit(remove_temp_dir);
        temp_dir_owner = getpid();
        return true;
    }
    temp_dir[0] = '\0';
    return false;
}

// Whether the directory of this process exists.  Creates it again if a cleaner of the
// system removed it.
static bool temp_dir_exists()
{
    struct stat status;
    if (temp_dir_owner != getpid() || temp_dir[0] == '\0')
        return false;
    return posix_retry([&] { return mkdir(temp_dir, 0700); }) == 0 ||
           (posix_retry([&] { return lstat(temp_dir, &status); }) == 0 && S_ISDIR(status.st_mode) &&
            status.st_uid == geteuid());
}

// TMPDIR is used if it is absolute and contains no "\": a relative path would lead
// elsewhere after a change of directory, and "\" is converted to "/" in all paths.
bool platform_temp_dir(char *to, size_t size)
{
    constexpr size_t longest_rest = 40; // of a path: the name of the directory, and of a file in it
    const char *parent = getenv("TMPDIR");
    bool is_usable = parent != nullptr && parent[0] == '/' && strchr(parent, '\\') == nullptr &&
                     strlen(parent) + longest_rest < size;
    bool exists =
        temp_dir_exists() || (is_usable && create_temp_dir(parent)) || create_temp_dir("/tmp");
    int length = snprintf(to, size, "%s/", temp_dir);
    return exists && length >= 0 && static_cast<size_t>(length) < size;
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

// Whether both paths lead to one file because the file system ignores case.
static bool differ_only_in_case(const char *old_path, const char *new_path)
{
    struct stat one, other;
    return strcasecmp(old_path, new_path) == 0 && strcmp(old_path, new_path) != 0 &&
           lstat(old_path, &one) == 0 && lstat(new_path, &other) == 0 &&
           one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_nlink == 1;
}

bool platform_rename(const char *old_path, const char *new_path)
{
    if (differ_only_in_case(old_path, new_path))
        return rename(old_path, new_path) == 0; // not reached: no file system here ignores case
#ifdef RENAME_NOREPLACE
    if (posix_retry([&] {
            return renameat2(AT_FDCWD, old_path, AT_FDCWD, new_path, RENAME_NOREPLACE);
        }) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false; // otherwise the file system does not support it
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
