#include "platform/open_windows.h"

#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

int windows_open(const char *path, int flags)
{
    constexpr int last_standard_stream = 2;
    int file = _open(path, flags | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    if (file < 0 || file > last_standard_stream)
        return file;
    // The first call may have created or emptied the file.
    int other = windows_open(path, flags & ~(_O_EXCL | _O_TRUNC));
    _close(file);
    return other;
}

int windows_open_retrying(const char *path, int flags)
{
    const ULONGLONG deadline = GetTickCount64() + 2000;
    int file = windows_open(path, flags);
    while (file < 0 && _doserrno == ERROR_SHARING_VIOLATION && GetTickCount64() < deadline) {
        Sleep(20);
        file = windows_open(path, flags);
    }
    return file;
}

HANDLE windows_open_identity(const char *path, BY_HANDLE_FILE_INFORMATION *identity)
{
    HANDLE file = CreateFileA(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE || GetFileInformationByHandle(file, identity) == 0)
        *identity = {};
    return file;
}
