#include "platform/durable.h"
#include "platform/open_posix.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif

// ---- Locks ----

int64_t platform_clock()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

static void sleep_ms(long duration)
{
    timespec pause = {0, duration * 1000000};
    nanosleep(&pause, nullptr);
}

// flock ties the lock to the open file description: closing another descriptor of the
// same file does not release it.  Waits only for another's lock.  True also if the
// file system has no locks or ran out of them.
static bool lock_or_time_out(int file, int64_t deadline)
{
    for (long pause = 1; flock(file, LOCK_EX | LOCK_NB) != 0; pause = pause < 32 ? 2 * pause : 50) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return true;
        if (platform_clock() >= deadline)
            return false;
        sleep_ms(pause);
    }
    return true;
}

// Whether the path no longer leads to the open file.
static bool was_replaced(const char *path, int file)
{
    struct stat one, other;
    if (posix_retry([&] { return stat(path, &one); }) != 0)
        return errno == ENOENT;
    return posix_retry([&] { return fstat(file, &other); }) == 0 &&
           (one.st_dev != other.st_dev || one.st_ino != other.st_ino);
}

intptr_t platform_lock_file(const char *path, int64_t deadline)
{
    for (;;) {
        bool has_text = false;
        int file = posix_open_to_write(path, O_APPEND, &has_text);
        if (file < 0)
            return -1;
        if (!lock_or_time_out(file, deadline)) {
            close(file);
            errno = ETIMEDOUT;
            return -1;
        }
        if (!was_replaced(path, file))
            return file;
        platform_unlock(file);
    }
}

// Unlocks explicitly: a child that another thread forked has the same open file
// description, and closing the descriptor here alone would not release the lock.
void platform_unlock(intptr_t lock)
{
    int file = static_cast<int>(lock);
    flock(file, LOCK_UN);
    close(file);
}

// ---- File identity ----

// A device has no contents of its own, and other programs write to it.
static file_state state_of(const struct stat &status)
{
    if (!S_ISREG(status.st_mode))
        return {};
    return {status.st_dev,
            status.st_ino,
            static_cast<uint64_t>(status.st_size),
            {status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec,
             status.st_ctim.tv_nsec}};
}

bool platform_file_state(const char *path, file_state *state)
{
    struct stat status = {};
    bool is_known = posix_retry([&] { return stat(path, &status); }) == 0;
    *state = state_of(status);
    return is_known;
}

bool platform_stream_state(FILE *file, file_state *state)
{
    struct stat status = {};
    bool is_known = posix_retry([&] { return fstat(fileno(file), &status); }) == 0;
    *state = state_of(status);
    return is_known;
}

bool platform_same_state(const file_state *first, const file_state *second)
{
    return memcmp(first, second, sizeof *first) == 0;
}

// The length of the directory part of a path, with its "/"; 0 if it has none.
static int dir_length(const char *path)
{
    const char *last = strrchr(path, '/');
    return last == nullptr ? 0 : static_cast<int>(last - path) + 1;
}

// A relative link is relative to the directory of the link.
bool platform_follow_links(const char *path, char *to, size_t size)
{
    char target[PATH_MAX];
    bool fits = text_copy(to, size, path);
    for (int left = 40; fits && left > 0; --left) { // as many as the system follows
        ssize_t length = posix_retry([&] { return readlink(to, target, sizeof target - 1); });
        if (length < 0)
            return errno == EINVAL || errno == ENOENT; // not a link, or does not exist
        target[length] = '\0';
        to[target[0] == '/' ? 0 : dir_length(to)] = '\0';
        fits = text_append(to, size, target);
    }
    errno = fits ? ELOOP : ENAMETOOLONG; // not reached: the file has opened
    return false;                        // not reached: the same
}

// ---- New files ----

// Whether a file has an access list or user attributes, which would be lost when
// another file replaces it.  True also if they can't be read.
static bool has_attributes(const char *path)
{
#ifdef __linux__
    char names[4096];
    ssize_t length = posix_retry([&] { return listxattr(path, names, sizeof names); });
    if (length < 0)
        return errno != ENOTSUP && errno != ENOSYS;
    for (const char *name = names; name < names + length; name += strlen(name) + 1)
        if (text_starts_with(name, "user.") || strcmp(name, "system.posix_acl_access") == 0)
            return true;
#endif
    (void)path;
    return false;
}

// The number distinguishes files of threads, and files that killed processes left.  A
// name that is too long is rejected by the system, so it must not be truncated.
static int create_unique(new_file *created, const char *path, mode_t mode)
{
    int file = -1;
    errno = EEXIST;
    for (int number = 0; file < 0 && errno == EEXIST && number < 1000; ++number) {
        snprintf(created->path, sizeof created->path, "%.*s.vek-%ld-%d", dir_length(path), path,
                 static_cast<long>(getpid()), number);
        file = posix_open(created->path, O_WRONLY | O_CREAT | O_EXCL, mode);
    }
    if (file < 0)
        created->path[0] = '\0';
    return file;
}

// A default access list of the directory would give other users access.
static bool remove_access_list(int file)
{
#ifdef __linux__
    return posix_retry([&] { return fremovexattr(file, "system.posix_acl_access"); }) == 0 ||
           errno == ENODATA || errno == ENOTSUP || errno == ENOSYS;
#else
    return file >= 0;
#endif
}

static bool set_owner(int file, uid_t user, gid_t group)
{
    return posix_retry([&] { return fchown(file, user, group); }) == 0;
}

static bool set_mode(int file, mode_t mode)
{
    return posix_retry([&] { return fchmod(file, mode); }) == 0;
}

// The permissions of a private copy.  Without the group of the original, the group and
// others get only what both had.  With an access list, only the owner has access.
static mode_t private_mode(mode_t mode, bool has_group, bool has_list)
{
    if (has_list)
        mode &= 0700;
    if (!has_group)
        mode = (mode & 0700) | (mode & mode >> 3 & 7) * 011;
    return (mode & 0777) | S_IWUSR;
}

// Set the owner and mode that the kind requires.
static bool set_owner_and_mode(int file, new_file_kind kind, const struct stat *like, bool has_list)
{
    struct stat own;
    if (posix_retry([&] { return fstat(file, &own); }) != 0 || !remove_access_list(file))
        return false;
    bool has_group = own.st_gid == like->st_gid;
    bool has_owner =
        (own.st_uid == like->st_uid && has_group) || set_owner(file, like->st_uid, like->st_gid);
    if (kind == NEW_FILE_PRIVATE) {
        has_group = has_owner || has_group || set_owner(file, own.st_uid, like->st_gid);
        // If this fails, the file remains more private.
        set_mode(file, private_mode(like->st_mode, has_group, has_list));
        return true;
    }
    if (has_owner && set_mode(file, like->st_mode & 07777))
        return true;
    errno = EPERM;
    return false;
}

bool platform_create_in_dir_of(new_file *created, const char *path, new_file_kind kind,
                               const char *like, const char *)
{
    struct stat status = {};
    *created->path = '\0';
    created->stream = nullptr;
    if (kind != NEW_FILE && posix_retry([&] { return stat(like, &status); }) != 0)
        return false;
    bool has_list = kind != NEW_FILE && has_attributes(like);
    bool can_be_replaced = S_ISREG(status.st_mode) && status.st_nlink <= 1 && !has_list;
    if (kind == NEW_FILE_EXACT && !can_be_replaced) {
        errno = EPERM;
        return false;
    }
    int file = create_unique(created, path, kind == NEW_FILE ? 0666 : 0600);
    if (file < 0)
        return false;
    if (kind == NEW_FILE || set_owner_and_mode(file, kind, &status, has_list))
        created->stream = fdopen(file, "w");
    if (created->stream == nullptr) {
        int reason = errno;
        close(file);
        platform_discard(created);
        errno = reason;
    }
    return created->stream != nullptr;
}

// A failure to close does not matter after a sync.
bool platform_sync_and_close(new_file *created)
{
    if (!platform_sync(created->stream))
        return false;
    FILE *stream = created->stream;
    created->stream = nullptr;
    fclose(stream);
    return platform_sync_dir_of(created->path);
}

bool platform_replace(new_file *created, const char *path)
{
    if (posix_retry([&] { return rename(created->path, path); }) != 0)
        return false;
    *created->path = '\0';
    return true;
}

bool platform_create_from(new_file *created, const char *path)
{
    if (!platform_rename(created->path, path))
        return false;
    *created->path = '\0';
    return true;
}

void platform_discard(new_file *created)
{
    int reason = errno;
    if (created->stream != nullptr)
        fclose(created->stream);
    if (*created->path != '\0')
        platform_remove_file(created->path);
    created->stream = nullptr;
    *created->path = '\0';
    errno = reason;
}

bool platform_must_overwrite()
{
    return errno == EACCES || errno == EPERM || errno == EROFS || errno == EBUSY ||
           errno == EXDEV || errno == ENAMETOOLONG;
}

// A directory without read permission can't be opened, and is not synced.
bool platform_sync_dir_of(const char *path)
{
    char dir[PATH_MAX];
    int length = dir_length(path);
    snprintf(dir, sizeof dir, "%.*s", length == 0 ? 1 : length, length == 0 ? "." : path);
    int file = posix_open(dir, O_RDONLY | O_DIRECTORY);
    if (file < 0)
        return errno == EACCES;
    bool is_done = posix_sync(file);
    int reason = errno;
    close(file);
    errno = reason;
    return is_done;
}

// The device and inode numbers remain the same while a file is overwritten.
bool platform_lasting_copy_path(const char *path, char *to, size_t size)
{
    struct stat status;
    if (posix_retry([&] { return stat(path, &status); }) != 0)
        return false;
    int length =
        snprintf(to, size, "/var/tmp/.vek-previous-%ld-%llx-%llx", static_cast<long>(geteuid()),
                 static_cast<unsigned long long>(status.st_dev),
                 static_cast<unsigned long long>(status.st_ino));
    return length > 0 && static_cast<size_t>(length) < size;
}

bool platform_is_own_copy(const char *copy, const char *path)
{
    struct stat own, other;
    return posix_retry([&] { return lstat(copy, &own); }) == 0 && S_ISREG(own.st_mode) &&
           own.st_nlink == 1 && own.st_size > 0 &&
           (own.st_uid == geteuid() ||
            (posix_retry([&] { return stat(path, &other); }) == 0 && own.st_uid == other.st_uid));
}
