#include "platform/platform.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <direct.h>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

bool platform_current_dir(char *to, size_t width)
{
    return width <= INT_MAX && _getcwd(to, static_cast<int>(width)) != nullptr;
}

bool platform_change_dir(const char *path)
{
    return _chdir(path) == 0;
}

bool platform_make_dir(const char *path)
{
    return _mkdir(path) == 0;
}

// The C runtime does not open directories for reading.
FILE *platform_open_to_read(const char *path, const char *mode)
{
    return fopen(path, mode);
}

bool platform_opens_for_reading(const char *path)
{
    int file = _open(path, _O_RDONLY | _O_NOINHERIT);
    if (file < 0)
        return false;
    _close(file);
    return true;
}

bool platform_create_file(const char *path)
{
    int file = _open(path, _O_WRONLY | _O_CREAT | _O_TRUNC | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    if (file < 0)
        return false;
    _close(file);
    return true;
}

FILE *platform_open_to_write(const char *path, const char *mode)
{
    return fopen(path, mode);
}

bool platform_flush(FILE *file)
{
    return fflush(file) == 0 && _commit(_fileno(file)) == 0;
}

// Only a file that is open for writing can be flushed.
bool platform_flush_file(const char *path)
{
    int file = _open(path, _O_WRONLY | _O_NOINHERIT);
    if (file < 0)
        return false;
    bool is_done = _commit(file) == 0;
    _close(file);
    return is_done;
}

// Locks bind everybody here.  The locked byte lies where no file has one, so
// that the file can be read and written by other ways.
static void lock(int file, DWORD kind)
{
    OVERLAPPED place = {};
    place.OffsetHigh = 0x7fffffff;
    LockFileEx(reinterpret_cast<HANDLE>(_get_osfhandle(file)), kind, 0, 1, 0, &place);
}

intptr_t platform_hold_file(const char *path, bool *is_new)
{
    constexpr int flags = _O_RDWR | _O_APPEND | _O_CREAT | _O_NOINHERIT;
    int file = _open(path, flags | _O_EXCL, _S_IREAD | _S_IWRITE);
    *is_new = file >= 0;
    if (file < 0 && errno == EEXIST)
        file = _open(path, flags, _S_IREAD | _S_IWRITE);
    if (file >= 0)
        lock(file, LOCKFILE_EXCLUSIVE_LOCK);
    return file;
}

void platform_share(FILE *file)
{
    lock(_fileno(file), 0);
}

void platform_let_go(intptr_t hold)
{
    _close(static_cast<int>(hold));
}

bool platform_long_path(const char *path, char *to, size_t width)
{
    DWORD length = GetLongPathNameA(path, to, static_cast<DWORD>(width));
    return length > 0 && length < width;
}

// The directory of a name that the system proposes; the name itself is thrown
// away.  A name without a directory stays whole.
static bool find_temporary_dir(char *to, size_t width)
{
    char *name = _tempnam("c:/temp", "");
    if (name == nullptr)
        return false;
    for (char *place = name; *place != '\0'; ++place)
        if (*place == '\\')
            *place = '/';
    char *last = strrchr(name, '/');
    if (last != nullptr)
        last[1] = '\0';
    int length = snprintf(to, width, "%s", name);
    free(name);
    return length > 0 && static_cast<size_t>(length) < width;
}

// The same at every call, whatever becomes of the variables that the system
// goes by.
bool platform_temporary_dir(char *to, size_t width)
{
    static char temporary_dir[MAX_PATH];
    if (temporary_dir[0] == '\0' && !find_temporary_dir(temporary_dir, sizeof temporary_dir))
        temporary_dir[0] = '\0';
    int length = snprintf(to, width, "%s", temporary_dir);
    return length > 0 && static_cast<size_t>(length) < width;
}

// All processes of a user have one directory here.
intptr_t platform_hold_temporary_dir()
{
    HANDLE mutex = CreateMutexA(nullptr, FALSE, "Local\\vek_cfg_file");
    if (mutex != nullptr)
        WaitForSingleObject(mutex, INFINITE);
    return reinterpret_cast<intptr_t>(mutex);
}

void platform_let_temporary_dir_go(intptr_t hold)
{
    HANDLE mutex = reinterpret_cast<HANDLE>(hold);
    if (mutex == nullptr)
        return;
    ReleaseMutex(mutex);
    CloseHandle(mutex);
}

// A new file has the rights of its directory here.
void platform_create_like(const char *, const char *)
{
}

static bool file_identity(const char *path, BY_HANDLE_FILE_INFORMATION *identity)
{
    HANDLE file = CreateFileA(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    bool known = GetFileInformationByHandle(file, identity) != 0;
    CloseHandle(file);
    return known;
}

bool platform_same_file(const char *first, const char *second)
{
    BY_HANDLE_FILE_INFORMATION one, other;
    return file_identity(first, &one) && file_identity(second, &other) &&
           one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
           one.nFileIndexHigh == other.nFileIndexHigh && one.nFileIndexLow == other.nFileIndexLow;
}

// The C runtime's own operations leave directories and existing targets alone.
bool platform_remove_file(const char *path)
{
    return remove(path) == 0;
}

bool platform_rename(const char *old_path, const char *new_path)
{
    return rename(old_path, new_path) == 0;
}
