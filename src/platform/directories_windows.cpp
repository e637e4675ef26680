#include "platform/open_windows.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <direct.h>

bool platform_current_dir(char *to, size_t size)
{
    return size <= INT_MAX && _getcwd(to, static_cast<int>(size)) != nullptr;
}

// "C:" alone would open the device, not the current directory of the drive.
static HANDLE open_to_traverse(const char *path)
{
    char on_drive[] = "?:.";
    bool is_drive = path[0] != '\0' && path[1] == ':' && path[2] == '\0';
    on_drive[0] = path[0];
    return CreateFileA(is_drive ? on_drive : path, FILE_TRAVERSE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                       OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

// A process can change to a directory that it may traverse.
bool platform_dir_is_accessible(const char *path)
{
    BY_HANDLE_FILE_INFORMATION found;
    HANDLE dir = open_to_traverse(path);
    if (dir == INVALID_HANDLE_VALUE)
        return false;
    bool is_dir = GetFileInformationByHandle(dir, &found) != 0 &&
                  (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    CloseHandle(dir);
    return is_dir;
}

bool platform_make_dir(const char *path)
{
    return _mkdir(path) == 0;
}

// Opening a listing returns its first entry, too.  `path` is for the functions that take a
// path relative to the directory.
struct open_dir {
    HANDLE search;
    WIN32_FIND_DATAA entry;
    bool has_entry; // the first one, not returned yet
    char path[MAX_PATH];
};

open_dir *platform_open_dir(const char *path)
{
    char pattern[MAX_PATH];
    auto *dir = static_cast<open_dir *>(malloc(sizeof(open_dir)));
    if (dir != nullptr && text_copy(dir->path, path) && text_join(pattern, {path, "/*"})) {
        dir->search = FindFirstFileA(pattern, &dir->entry);
        dir->has_entry = true;
        if (dir->search != INVALID_HANDLE_VALUE)
            return dir;
    }
    free(dir);
    return nullptr;
}

bool platform_read_dir(open_dir *dir, char *name, size_t size)
{
    if (!dir->has_entry && FindNextFileA(dir->search, &dir->entry) == 0) {
        errno = GetLastError() == ERROR_NO_MORE_FILES ? 0 : EIO;
        return false;
    }
    dir->has_entry = false;
    text_copy(name, size, dir->entry.cFileName);
    return true;
}

bool platform_dir_is_accessible_at(open_dir *dir, const char *path)
{
    char whole[2 * MAX_PATH];
    return text_join(whole, {dir->path, "/", path}) && platform_dir_is_accessible(whole);
}

bool platform_make_dir_at(open_dir *dir, const char *path)
{
    char whole[2 * MAX_PATH];
    errno = ENAMETOOLONG;
    return text_join(whole, {dir->path, "/", path}) && platform_make_dir(whole);
}

void platform_close_dir(open_dir *dir)
{
    FindClose(dir->search);
    free(dir);
}
