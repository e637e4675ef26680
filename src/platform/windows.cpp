#include "platform/platform.h"
#include "platform/windows_open.h"
#include "text/text.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <direct.h>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

static FILE *open_stream(const char *path, int flags, const char *mode)
{
    flags |= strchr(mode, 'b') == nullptr ? _O_TEXT : _O_BINARY;
    int file = windows_open(path, flags);
    FILE *stream = file < 0 ? nullptr : _fdopen(file, mode);
    if (file >= 0 && stream == nullptr)
        _close(file);
    return stream;
}

// The C runtime does not open directories for reading.
FILE *platform_open_to_read(const char *path)
{
    return open_stream(path, _O_RDONLY, "rb");
}

FILE *platform_open_to_read_soon(const char *path)
{
    int file = windows_open_soon(path, _O_RDONLY | _O_BINARY);
    return file < 0 ? nullptr : _fdopen(file, "rb");
}

bool platform_is_readable_file(const char *path)
{
    int file = windows_open(path, _O_RDONLY);
    if (file < 0)
        return false;
    _close(file);
    return true;
}

bool platform_can_create(const char *dir, const char *name)
{
    char path[MAX_PATH];
    if (!text_join(path, {dir, "/", name}))
        return false;
    int file = windows_open(path, _O_WRONLY | _O_CREAT | _O_TRUNC);
    if (file < 0)
        return false;
    _close(file);
    remove(path);
    return true;
}

static bool is_on_disk(int file)
{
    return GetFileType(reinterpret_cast<HANDLE>(_get_osfhandle(file))) == FILE_TYPE_DISK;
}

// The file is emptied when nothing can fail any more, which also serves hidden
// files: creating one anew is refused.
FILE *platform_open_to_write(const char *path, const char *mode)
{
    bool appends = *mode == 'a', empties = *mode == 'w';
    int flags = (appends ? _O_APPEND : 0) | (appends || empties ? _O_CREAT : 0);
    FILE *stream = open_stream(path, _O_WRONLY | flags, mode);
    if (stream == nullptr || !empties || platform_cut(stream))
        return stream;
    fclose(stream);
    errno = EACCES;
    return nullptr;
}

bool platform_write(FILE *file, const char *from, size_t size)
{
    return fwrite(from, 1, size, file) == size && fflush(file) == 0;
}

bool platform_rewind(FILE *file)
{
    rewind(file);
    return true;
}

bool platform_cut(FILE *file)
{
    const int number = _fileno(file);
    return !is_on_disk(number) || _chsize_s(number, _telli64(number)) == 0;
}

static bool sync_to_disk(int file)
{
    return !is_on_disk(file) || _commit(file) == 0;
}

bool platform_sync(FILE *file)
{
    return fflush(file) == 0 && sync_to_disk(_fileno(file));
}

static void turn_separators(char *path)
{
    for (; *path != '\0'; ++path)
        if (*path == '\\')
            *path = '/';
}

bool platform_long_path(const char *path, char *to, size_t size)
{
    DWORD length = GetLongPathNameA(path, to, static_cast<DWORD>(size));
    if (length == 0 || length >= size)
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
// goes by.  One that was cleaned away is made again.
bool platform_temporary_dir(char *to, size_t size)
{
    static char temporary_dir[MAX_PATH];
    if (temporary_dir[0] == '\0' && !find_temporary_dir(temporary_dir))
        temporary_dir[0] = '\0';
    if (temporary_dir[0] != '\0' && GetFileAttributesA(temporary_dir) == INVALID_FILE_ATTRIBUTES)
        _mkdir(temporary_dir);
    int length = snprintf(to, size, "%s", temporary_dir);
    return length > 0 && static_cast<size_t>(length) < size;
}

// All processes of a user have one directory here, as far as their variables say
// so.  Where the mutex can't be had, nothing is locked.
intptr_t platform_lock_temp_dir()
{
    char name[MAX_PATH];
    const char *user = getenv("USERNAME");
    snprintf(name, sizeof name, "Global\\vek_cfg_file_%s", user == nullptr ? "" : user);
    HANDLE mutex = CreateMutexA(nullptr, FALSE, name);
    if (mutex == nullptr || WaitForSingleObject(mutex, 10000) != WAIT_TIMEOUT)
        return reinterpret_cast<intptr_t>(mutex);
    CloseHandle(mutex);
    return -1;
}

void platform_unlock_temp_dir(intptr_t lock)
{
    HANDLE mutex = reinterpret_cast<HANDLE>(lock);
    if (lock <= 0)
        return;
    ReleaseMutex(mutex);
    CloseHandle(mutex);
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
    HANDLE first_file = windows_open_identity(first, &one);
    HANDLE second_file = windows_open_identity(second, &other);
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
