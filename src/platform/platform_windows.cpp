#include "platform/open_windows.h"
#include "platform/platform.h"
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

FILE *platform_open_to_read_retrying(const char *path)
{
    int file = windows_open_retrying(path, _O_RDONLY | _O_BINARY);
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

// The file is emptied last, when nothing else can fail.  This also works for a hidden
// file, which can't be created again.
FILE *platform_open_to_write(const char *path, const char *mode)
{
    bool appends = *mode == 'a', empties = *mode == 'w';
    int flags = (appends ? _O_APPEND : 0) | (appends || empties ? _O_CREAT : 0);
    FILE *stream = open_stream(path, _O_WRONLY | flags, mode);
    if (stream == nullptr || !empties || platform_truncate(stream))
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

bool platform_truncate(FILE *file)
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

// Convert "\" to "/".
static void convert_separators(char *path)
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
    convert_separators(to);
    return true;
}

// The directory of a name that the system proposes.  The path is made absolute: a relative
// one would lead elsewhere after a change of directory.
static bool find_temp_dir(char (&to)[MAX_PATH])
{
    char *name = _tempnam("c:/temp", "");
    bool is_found = name != nullptr && _fullpath(to, name, sizeof to) != nullptr;
    free(name);
    if (!is_found)
        return false;
    convert_separators(to);
    char *last = strrchr(to, '/');
    if (last != nullptr)
        last[1] = '\0';
    return last != nullptr;
}

// The same at every call, even if the environment variables that the system uses change.
// Creates the directory again if it was removed.
bool platform_temp_dir(char *to, size_t size)
{
    static char temp_dir[MAX_PATH];
    if (temp_dir[0] == '\0' && !find_temp_dir(temp_dir))
        temp_dir[0] = '\0';
    if (temp_dir[0] != '\0' && GetFileAttributesA(temp_dir) == INVALID_FILE_ATTRIBUTES)
        _mkdir(temp_dir);
    int length = snprintf(to, size, "%s", temp_dir);
    return length > 0 && static_cast<size_t>(length) < size;
}

// The processes of a user share one directory here if their environments are the same.
// If the mutex can't be created, nothing is locked.
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

// Both files are open while they are identified: an identity is valid only so long.  A
// file system without identities reports 0.
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

// remove and rename of the C runtime leave directories and existing targets alone.
bool platform_remove_file(const char *path)
{
    return remove(path) == 0;
}

bool platform_rename(const char *old_path, const char *new_path)
{
    return rename(old_path, new_path) == 0;
}
