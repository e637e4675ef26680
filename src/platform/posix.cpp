#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <strings.h>
#include <sys/file.h>
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
    return *path != '\0' && text_join(itself, {path, "/."}) && stat(itself, &status) == 0;
}

// A host's signal may interrupt the opening of what is not on a disk of this
// computer.
static int open_patiently(const char *path, int flags, mode_t mode = 0)
{
    int file = -1;
    do
        file = open(path, flags | O_CLOEXEC, mode);
    while (file < 0 && errno == EINTR);
    return file;
}

bool platform_make_dir(const char *path)
{
    return mkdir(path, 0777) == 0;
}

// Opening without blocking keeps a pipe without a writer from holding the
// process.  *is_plain tells a regular file from a pipe or device.
static int open_file(const char *path, bool *is_plain)
{
    int file = open_patiently(path, O_RDONLY | O_NONBLOCK);
    if (file < 0)
        return -1;
    struct stat status;
    if (fstat(file, &status) == 0 && !S_ISDIR(status.st_mode)) {
        *is_plain = S_ISREG(status.st_mode);
        return file;
    }
    close(file);
    errno = EISDIR;
    return -1;
}

// Whether a device gives bytes as long as it is read.  A terminal is read as far
// as somebody types.
static bool never_ends(int file)
{
    struct stat status;
    char first;
    if (fstat(file, &status) != 0 || !S_ISCHR(status.st_mode) || isatty(file) != 0)
        return false;
    ssize_t length = -1;
    do
        length = read(file, &first, 1);
    while (length < 0 && errno == EINTR);
    return length == 1;
}

FILE *platform_open_to_read(const char *path, const char *mode)
{
    bool is_plain = false;
    int file = open_file(path, &is_plain);
    if (file < 0)
        return nullptr;
    if (!is_plain)
        fcntl(file, F_SETFL, 0); // a pipe that has a writer is waited for
    bool is_usable = is_plain || !never_ends(file);
    FILE *stream = is_usable ? fdopen(file, mode) : nullptr;
    if (stream == nullptr)
        close(file);
    if (!is_usable)
        errno = EINVAL;
    return stream;
}

bool platform_opens_for_reading(const char *path)
{
    bool is_plain = false;
    int file = open_file(path, &is_plain);
    if (file < 0)
        return false;
    close(file);
    return true;
}

// What a link leads to is left alone: in a directory that many may write to,
// anybody could have made it.
bool platform_create_file(const char *path)
{
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOFOLLOW;
    int file = open_patiently(path, flags, 0666);
    if (file < 0 && errno == ELOOP && unlink(path) == 0)
        file = open_patiently(path, flags, 0666);
    if (file < 0)
        return false;
    close(file);
    return true;
}

// Opening without blocking keeps a pipe without a reader from holding the
// process.  *is_plain tells a regular file from a device.
static int open_to_write(const char *path, int flags, bool *is_plain)
{
    int file = open_patiently(path, O_WRONLY | O_CREAT | O_NONBLOCK | flags, 0666);
    if (file < 0)
        return -1;
    struct stat status;
    bool is_known = fstat(file, &status) == 0;
    if (is_known && !S_ISFIFO(status.st_mode)) {
        *is_plain = S_ISREG(status.st_mode);
        return file;
    }
    close(file);
    errno = ENXIO; // what a pipe without a reader gives
    return -1;
}

// The mode's first letter tells appending from writing anew.  The file is
// emptied when nothing can fail any more.
FILE *platform_open_to_write(const char *path, const char *mode)
{
    int flags = *mode == 'a' ? O_APPEND : 0;
    bool is_plain = false;
    int file = open_to_write(path, flags, &is_plain);
    if (file < 0)
        return nullptr;
    FILE *stream = fcntl(file, F_SETFL, flags) == 0 ? fdopen(file, mode) : nullptr;
    if (stream == nullptr)
        close(file);
    if (stream == nullptr || flags == O_APPEND || !is_plain || ftruncate(file, 0) == 0)
        return stream;
    int reason = errno;
    fclose(stream);
    errno = reason;
    return nullptr;
}

static bool flush(int file)
{
    return fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS;
}

bool platform_flush(FILE *file)
{
    return fflush(file) == 0 && flush(fileno(file));
}

bool platform_flush_file(const char *path)
{
    int file = open_patiently(path, O_RDONLY | O_NONBLOCK);
    if (file < 0)
        return false;
    bool is_done = flush(file);
    int reason = errno;
    close(file);
    errno = reason;
    return is_done;
}

static int open_or_make(const char *path, bool *is_new)
{
    bool is_plain = false;
    int file = open_to_write(path, O_APPEND | O_EXCL, &is_plain);
    *is_new = file >= 0;
    return *is_new || errno != EEXIST ? file : open_to_write(path, O_APPEND, &is_plain);
}

// This kind of lock belongs to the open file, so that it outlives the closing
// of the same file by other ways.
static void lock(int file, int kind)
{
    while (flock(file, kind) != 0 && errno == EINTR)
        continue;
}

// Whether the path leads elsewhere now than to the open file.
static bool has_moved(const char *path, int file)
{
    struct stat one, other;
    if (stat(path, &one) != 0)
        return errno == ENOENT;
    return fstat(file, &other) == 0 && (one.st_dev != other.st_dev || one.st_ino != other.st_ino);
}

intptr_t platform_hold_file(const char *path, bool *is_new)
{
    for (;;) {
        int file = open_or_make(path, is_new);
        if (file < 0)
            return file;
        lock(file, LOCK_EX);
        if (!has_moved(path, file))
            return file;
        close(file);
    }
}

void platform_share(FILE *file)
{
    lock(fileno(file), LOCK_SH);
}

void platform_let_go(intptr_t hold)
{
    close(static_cast<int>(hold));
}

void platform_let_go_and_remove(intptr_t hold, const char *path)
{
    unlink(path);
    platform_let_go(hold);
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

intptr_t platform_hold_temporary_dir()
{
    return 0;
}

void platform_let_temporary_dir_go(intptr_t)
{
}

void platform_create_like(const char *path, const char *other)
{
    struct stat status;
    if (stat(other, &status) != 0)
        return;
    int file = open_patiently(path, O_WRONLY | O_CREAT | O_EXCL, (status.st_mode & 0777) | S_IWUSR);
    if (file >= 0)
        close(file);
}

bool platform_same_file(const char *first, const char *second)
{
    struct stat one, other;
    return stat(first, &one) == 0 && stat(second, &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

bool platform_remove_file(const char *path)
{
    return unlink(path) == 0;
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
    if (renameat2(AT_FDCWD, old_path, AT_FDCWD, new_path, RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false; // else this file system does not know how
#endif
    struct stat status;
    if (lstat(new_path, &status) == 0) {
        errno = EEXIST;
        return false;
    }
    return rename(old_path, new_path) == 0;
}
