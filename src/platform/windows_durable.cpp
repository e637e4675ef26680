#include "platform/durable.h"
#include "platform/platform.h"
#include "platform/windows_open.h"
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

// Who has this file has the lock: nobody else can open it, and the system removes
// it with the process.  It is not the private file itself, which could not be
// replaced while it is open.
static HANDLE create_lock_file(const char *path)
{
    char name[MAX_PATH];
    if (!text_join(name, {path, ".lock"}))
        return INVALID_HANDLE_VALUE;
    return CreateFileA(name, GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

// A file that is about to be removed can't be opened for a moment, and gives the
// same reason as one in a directory where none can be created.
intptr_t platform_lock_file(const char *path, int64_t deadline)
{
    int file = windows_open_soon(path, _O_WRONLY | _O_APPEND | _O_BINARY);
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

// ---- What a path leads to ----

// A device has no identity.
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

static uint64_t join(DWORD high, DWORD low)
{
    return static_cast<uint64_t>(high) << 32 | low;
}

static file_state state_of(const BY_HANDLE_FILE_INFORMATION &found, bool is_regular)
{
    if (!is_regular)
        return {};
    return {found.dwVolumeSerialNumber,
            join(found.nFileIndexHigh, found.nFileIndexLow),
            join(found.nFileSizeHigh, found.nFileSizeLow),
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

// What a link leads to is never replaced here.
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

static int create_unique(new_file *made, const char *path, const char *mode)
{
    const int form = strchr(mode, 'b') == nullptr ? _O_TEXT : _O_BINARY;
    int file = -1;
    errno = EEXIST;
    for (int number = 0; file < 0 && errno == EEXIST && number < 1000; ++number) {
        int length = snprintf(made->path, sizeof made->path, "%.*s.vek-%lu-%d", dir_length(path),
                              path, GetCurrentProcessId(), number);
        if (length >= MAX_PATH)
            errno = ENAMETOOLONG;
        else
            file = windows_open(made->path, _O_WRONLY | _O_CREAT | _O_EXCL | form);
    }
    if (file < 0)
        *made->path = '\0';
    return file;
}

// Whether replacing the file would lose nothing.
static bool can_be_replaced(const BY_HANDLE_FILE_INFORMATION &file, bool is_regular)
{
    return is_regular && file.nNumberOfLinks <= 1 &&
           (file.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
}

// A new file has the rights of its directory here, and a hidden one stays hidden.
bool platform_create_beside(new_file *made, const char *path, new_file_kind kind, const char *like,
                            const char *mode)
{
    BY_HANDLE_FILE_INFORMATION other = {};
    bool is_regular = false;
    *made->path = '\0';
    made->stream = nullptr;
    if (kind != NEW_FILE && !read_identity(like, &other, &is_regular))
        return false;
    if (kind == NEW_FILE_EXACT && !can_be_replaced(other, is_regular)) {
        errno = EPERM;
        return false;
    }
    int file = create_unique(made, path, mode);
    if (file < 0)
        return false;
    DWORD kept = other.dwFileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    if (kept != 0)
        SetFileAttributesA(made->path, kept);
    made->stream = _fdopen(file, mode);
    if (made->stream == nullptr) {
        int reason = errno;
        _close(file);
        platform_discard(made);
        errno = reason;
    }
    return made->stream != nullptr;
}

bool platform_finish(new_file *made)
{
    if (!platform_sync(made->stream))
        return false;
    FILE *stream = made->stream;
    made->stream = nullptr;
    fclose(stream);
    return true;
}

static bool is_directory(const char *path)
{
    DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// A file that another program has open can't be replaced; most have it for a
// moment.
bool platform_replace(new_file *made, const char *path)
{
    constexpr DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    const ULONGLONG deadline = GetTickCount64() + 2000;
    while (!MoveFileExA(made->path, path, flags)) {
        if (is_directory(path) || GetTickCount64() > deadline) {
            errno = EACCES;
            return false;
        }
        Sleep(10);
    }
    *made->path = '\0';
    return true;
}

bool platform_place(new_file *made, const char *path)
{
    if (!platform_rename(made->path, path))
        return false;
    *made->path = '\0';
    return true;
}

void platform_discard(new_file *made)
{
    int reason = errno;
    if (made->stream != nullptr)
        fclose(made->stream);
    if (*made->path != '\0')
        DeleteFileA(made->path);
    made->stream = nullptr;
    *made->path = '\0';
    errno = reason;
}

bool platform_must_overwrite()
{
    return errno == EACCES || errno == EPERM || errno == EXDEV || errno == ENAMETOOLONG;
}

// What moves a file here waits until its name is on the disk.
bool platform_sync_dir_of(const char *)
{
    return true;
}

bool platform_lasting_copy_path(const char *path, char *to, size_t size)
{
    char dir[MAX_PATH];
    file_state state;
    if (!platform_file_state(path, &state) || !platform_temporary_dir(dir, sizeof dir))
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
