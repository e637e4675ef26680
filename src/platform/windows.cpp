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

bool platform_can_enter(const char *path)
{
    char here[260];
    return platform_current_dir(here, sizeof here) && _chdir(path) == 0 && _chdir(here) == 0;
}

bool platform_make_dir(const char *path)
{
    return _mkdir(path) == 0;
}

// Nothing is handed to child processes: they would keep files from being
// removed, and locks from ending.
static FILE *open_stream(const char *path, int flags, const char *mode)
{
    flags |= strchr(mode, 'b') == nullptr ? _O_TEXT : _O_BINARY;
    int file = _open(path, flags | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    FILE *stream = file < 0 ? nullptr : _fdopen(file, mode);
    if (file >= 0 && stream == nullptr)
        _close(file);
    return stream;
}

// The C runtime does not open directories for reading.
FILE *platform_open_to_read(const char *path, const char *mode)
{
    return open_stream(path, _O_RDONLY, mode);
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

static HANDLE handle_of(int file)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(file));
}

static bool is_on_disk(int file)
{
    return GetFileType(handle_of(file)) == FILE_TYPE_DISK;
}

// The file is emptied when nothing can fail any more, which also serves hidden
// files: creating one anew is refused.
FILE *platform_open_to_write(const char *path, const char *mode)
{
    bool appends = *mode == 'a';
    FILE *stream = open_stream(path, _O_WRONLY | _O_CREAT | (appends ? _O_APPEND : 0), mode);
    if (stream == nullptr || appends || !is_on_disk(_fileno(stream)) ||
        _chsize(_fileno(stream), 0) == 0)
        return stream;
    fclose(stream);
    errno = EACCES;
    return nullptr;
}

static bool flush(int file)
{
    return !is_on_disk(file) || _commit(file) == 0;
}

bool platform_flush(FILE *file)
{
    return fflush(file) == 0 && flush(_fileno(file));
}

// Only a file that is open for writing can be flushed.
bool platform_flush_file(const char *path)
{
    int file = _open(path, _O_WRONLY | _O_NOINHERIT);
    if (file < 0)
        return false;
    bool is_done = flush(file);
    _close(file);
    return is_done;
}

// Locks bind everybody here.  The locked byte lies where no file has one, so
// that the file can be read and written by other ways.
static void lock(int file, DWORD kind)
{
    OVERLAPPED place = {};
    place.OffsetHigh = 0x7fffffff;
    LockFileEx(handle_of(file), kind, 0, 1, 0, &place);
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
    int file = static_cast<int>(hold);
    OVERLAPPED place = {};
    place.OffsetHigh = 0x7fffffff;
    UnlockFileEx(handle_of(file), 0, 1, 0, &place);
    _close(file);
}

// A file that is held can't be removed here.  Who holds it next may have written
// to it meanwhile.
void platform_let_go_and_remove(intptr_t hold, const char *path)
{
    platform_let_go(hold);
    HANDLE file = CreateFileA(path, GENERIC_READ | DELETE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    LARGE_INTEGER size;
    FILE_DISPOSITION_INFO removal = {TRUE};
    if (GetFileSizeEx(file, &size) && size.QuadPart == 0)
        SetFileInformationByHandle(file, FileDispositionInfo, &removal, sizeof removal);
    CloseHandle(file);
}

static void turn_separators(char *path)
{
    for (; *path != '\0'; ++path)
        if (*path == '\\')
            *path = '/';
}

bool platform_long_path(const char *path, char *to, size_t width)
{
    DWORD length = GetLongPathNameA(path, to, static_cast<DWORD>(width));
    if (length == 0 || length >= width)
        return false;
    turn_separators(to);
    return true;
}

// The directory of a name that the system proposes; the name itself is thrown
// away.  A relative one would lead elsewhere after a change of directory.
static bool find_temporary_dir(char (&to)[MAX_PATH])
{
    char *name = _tempnam("c:/temp", "");
    bool is_found = name != nullptr && _fullpath(to, name, sizeof to) != nullptr;
    free(name);
    if (!is_found)
        return false;
    turn_separators(to);
    char *last = strrchr(to, '/');
    if (last != nullptr)
        last[1] = '\0';
    return last != nullptr;
}

// The same at every call, whatever becomes of the variables that the system
// goes by.
bool platform_temporary_dir(char *to, size_t width)
{
    static char temporary_dir[MAX_PATH];
    if (temporary_dir[0] == '\0' && !find_temporary_dir(temporary_dir))
        temporary_dir[0] = '\0';
    int length = snprintf(to, width, "%s", temporary_dir);
    return length > 0 && static_cast<size_t>(length) < width;
}

// All processes of a user have one directory here, as far as their variables say
// so.  Where the mutex can't be had, nothing is held.
intptr_t platform_hold_temporary_dir()
{
    char name[MAX_PATH];
    const char *user = getenv("USERNAME");
    snprintf(name, sizeof name, "Global\\vek_cfg_file_%s", user == nullptr ? "" : user);
    HANDLE mutex = CreateMutexA(nullptr, FALSE, name);
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

static HANDLE open_for_identity(const char *path, BY_HANDLE_FILE_INFORMATION *identity)
{
    HANDLE file = CreateFileA(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE || GetFileInformationByHandle(file, identity) == 0)
        *identity = {};
    return file;
}

static void close_if_open(HANDLE file)
{
    if (file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
}

// An identity lasts while the file is open.  A file system that has none gives 0.
bool platform_same_file(const char *first, const char *second)
{
    BY_HANDLE_FILE_INFORMATION one, other;
    HANDLE first_file = open_for_identity(first, &one);
    HANDLE second_file = open_for_identity(second, &other);
    close_if_open(first_file);
    close_if_open(second_file);
    return (one.nFileIndexHigh != 0 || one.nFileIndexLow != 0) &&
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
