#include "platform/durable.h"
#include "platform/open_windows.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <io.h>

// ---- Locks ----

int64_t platform_clock()
{
    return static_cast<int64_t>(GetTickCount64());
}

// The lock is an open file "<path>.lock", which no other process can open.  The system
// removes it when the process ends.  The file to be locked can't serve as the lock: it
// could not be replaced while it is open.
static HANDLE create_lock_file(const char *path)
{
    char name[MAX_PATH];
    if (!text_join(name, {path, ".lock"}))
        return INVALID_HANDLE_VALUE;
    return CreateFileA(name, GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

// ERROR_ACCESS_DENIED has two causes: the lock file is being removed, which takes a
// moment, or the directory does not allow creating it.  In the second
// case nothing is locked.
intptr_t platform_lock_file(const char *path, int64_t deadline)
{
    int file = windows_open_retrying(path, _O_WRONLY | _O_APPEND | _O_BINARY);
    if (file < 0)
        return -1;
    _close(file);
    const int64_t start = platform_clock();
    for (;;) {
        HANDLE lock = create_lock_file(path);
        if (lock != INVALID_HANDLE_VALUE)
            return reinterpret_cast<intptr_t>(lock);
        DWORD reason = GetLastError();
        if (reason != ERROR_SHARING_VIOLATION &&
            (reason != ERROR_ACCESS_DENIED || platform_clock() > start + 100))
            return 0;
        if (platform_clock() >= deadline) {
            errno = ETIMEDOUT;
            return -1;
        }
        Sleep(10);
    }
}

void platform_unlock(intptr_t lock)
{
    if (lock != 0)
        CloseHandle(reinterpret_cast<HANDLE>(lock));
}

// ---- File identity ----

// A device has no identity: *identity becomes zeros, and *is_regular false.
static bool read_identity(const char *path, BY_HANDLE_FILE_INFORMATION *identity, bool *is_regular)
{
    HANDLE file = windows_open_identity(path, identity);
    *is_regular = false;
    if (file == INVALID_HANDLE_VALUE) {
        errno = ENOENT;
        return GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES;
    }
    *is_regular = GetFileType(file) == FILE_TYPE_DISK &&
                  (identity->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    CloseHandle(file);
    return true;
}

static uint64_t join_words(DWORD high, DWORD low)
{
    return static_cast<uint64_t>(high) << 32 | low;
}

static file_state state_of(const BY_HANDLE_FILE_INFORMATION &found, bool is_regular)
{
    if (!is_regular)
        return {};
    return {found.dwVolumeSerialNumber,
            join_words(found.nFileIndexHigh, found.nFileIndexLow),
            join_words(found.nFileSizeHigh, found.nFileSizeLow),
            {found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime, 0, 0}};
}

bool platform_file_state(const char *path, file_state *state)
{
    BY_HANDLE_FILE_INFORMATION found = {};
    bool is_regular = false;
    bool is_known = read_identity(path, &found, &is_regular);
    *state = state_of(found, is_regular);
    return is_known;
}

bool platform_stream_state(FILE *file, file_state *state)
{
    BY_HANDLE_FILE_INFORMATION found = {};
    HANDLE handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
    bool is_regular =
        GetFileType(handle) == FILE_TYPE_DISK && GetFileInformationByHandle(handle, &found) != 0;
    *state = state_of(found, is_regular);
    return true;
}

bool platform_same_state(const file_state *first, const file_state *second)
{
    return memcmp(first, second, sizeof *first) == 0;
}

// Symbolic links are not followed: a file that is one is never replaced.
bool platform_follow_links(const char *path, char *to, size_t size)
{
    return text_copy(to, size, path);
}

// ---- New files ----

static int dir_length(const char *path)
{
    int length = 0;
    for (int i = 0; path[i] != '\0'; ++i)
        if (strchr("/\\:", path[i]) != nullptr)
            length = i + 1;
    return length;
}

static int create_unique(new_file *created, const char *path, const char *mode)
{
    const int form = strchr(mode, 'b') == nullptr ? _O_TEXT : _O_BINARY;
    int file = -1;
    errno = EEXIST;
    for (int number = 0; file < 0 && errno == EEXIST && number < 1000; ++number) {
        int length = snprintf(created->path, sizeof created->path, "%.*s.vek-%lu-%d",
                              dir_length(path), path, GetCurrentProcessId(), number);
        if (length >= MAX_PATH)
            errno = ENAMETOOLONG;
        else
            file = windows_open(created->path, _O_WRONLY | _O_CREAT | _O_EXCL | form);
    }
    if (file < 0)
        *created->path = '\0';
    return file;
}

// Whether the file is a regular file without other hard links, and not a symbolic link.
static bool can_be_replaced(const BY_HANDLE_FILE_INFORMATION &file, bool is_regular)
{
    return is_regular && file.nNumberOfLinks <= 1 &&
           (file.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
}

// A new file inherits the permissions of its directory.  The hidden and system attributes
// are copied.
bool platform_create_in_dir_of(new_file *created, const char *path, new_file_kind kind,
                               const char *like, const char *mode)
{
    BY_HANDLE_FILE_INFORMATION other = {};
    bool is_regular = false;
    *created->path = '\0';
    created->stream = nullptr;
    if (kind != NEW_FILE && !read_identity(like, &other, &is_regular))
        return false;
    if (kind == NEW_FILE_EXACT && !can_be_replaced(other, is_regular)) {
        errno = EPERM;
        return false;
    }
    int file = create_unique(created, path, mode);
    if (file < 0)
        return false;
    DWORD kept = other.dwFileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    if (kept != 0)
        SetFileAttributesA(created->path, kept);
    created->stream = _fdopen(file, mode);
    if (created->stream == nullptr) {
        int reason = errno;
        _close(file);
        platform_discard(created);
        errno = reason;
    }
    return created->stream != nullptr;
}

bool platform_sync_and_close(new_file *created)
{
    if (!platform_sync(created->stream))
        return false;
    FILE *stream = created->stream;
    created->stream = nullptr;
    fclose(stream);
    return true;
}

static bool is_directory(const char *path)
{
    DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// A file that another program has open can't be replaced.  Most programs close it within
// a moment.
bool platform_replace(new_file *created, const char *path)
{
    constexpr DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    const ULONGLONG deadline = GetTickCount64() + 2000;
    while (!MoveFileExA(created->path, path, flags)) {
        if (is_directory(path) || GetTickCount64() > deadline) {
            errno = EACCES;
            return false;
        }
        Sleep(10);
    }
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
        DeleteFileA(created->path);
    created->stream = nullptr;
    *created->path = '\0';
    errno = reason;
}

bool platform_must_overwrite()
{
    return errno == EACCES || errno == EPERM || errno == EXDEV || errno == ENAMETOOLONG;
}

// Moving a file syncs its name (MOVEFILE_WRITE_THROUGH).
bool platform_sync_dir_of(const char *)
{
    return true;
}

bool platform_lasting_copy_path(const char *path, char *to, size_t size)
{
    char dir[MAX_PATH];
    file_state state;
    if (!platform_file_state(path, &state) || !platform_temp_dir(dir, sizeof dir))
        return false;
    int length = snprintf(to, size, "%s.vek-previous-%llx-%llx", dir,
                          static_cast<unsigned long long>(state.device),
                          static_cast<unsigned long long>(state.number));
    return length > 0 && static_cast<size_t>(length) < size;
}

bool platform_is_own_copy(const char *copy, const char *)
{
    file_state state;
    return platform_file_state(copy, &state) && state.size > 0;
}
