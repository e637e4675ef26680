// Deleting, renaming and backing up files.

#include "files/files.h"
#include "host/message.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstring>

int vorn_vek_delete_file(char *path)
{
    constexpr const char *caller = "vorn_vek_delete_file";
    char alias[VEK_PATH_SIZE];
    path = text_or_empty(path);
    const char *name = name_for_message(path, alias);
    if (!platform_remove_file(path)) {
        report(REPORT_ERROR, caller, "Could not delete file '%s' : %s", name, strerror(errno));
        return 1;
    }
    // Somebody may keep the file or bring it back; then there is no line.
    if (vek_file_exists(path) == 0 && vek_file_verbose)
        report(REPORT_PLAIN, caller, "File '%s' successfully deleted.", name);
    return 0;
}

int vorn_vek_delete_file_silent(char *path)
{
    vek_file_verbose = false;
    int result = vorn_vek_delete_file(path);
    vek_file_verbose = true;
    return result;
}

int vorn_vek_rename_file(char *old_path, char *new_path)
{
    constexpr const char *caller = "vorn_vek_rename_file";
    char old_alias[VEK_PATH_SIZE];
    char new_alias[VEK_PATH_SIZE];
    old_path = text_or_empty(old_path);
    new_path = text_or_empty(new_path);
    const char *old_name = name_for_message(old_path, old_alias);
    const char *new_name = name_for_message(new_path, new_alias);
    if (!platform_rename(old_path, new_path)) {
        const char *reason = strerror(errno);
        report(REPORT_ERROR, caller, "Could not rename file '%s' to", old_name);
        report(REPORT_ERROR, caller, "                      '%s' : %s", new_name, reason);
        return 1;
    }
    report(REPORT_PLAIN, caller, "File '%s' successfully renamed to", old_name);
    report(REPORT_PLAIN, caller, "     '%s'.", new_name);
    return 0;
}

// The backup's name has "q" for the last character of the file's.  A file that
// is its own backup is not removed; copying it is refused, in words.
int vek_backup_file(char *path)
{
    path = text_or_empty(path);
    if (vek_file_exists(path) == 0)
        return 1;
    char backup[4 * VEK_PATH_SIZE]; // the copy refuses what is too long
    if (!text_copy(backup, path))
        return 1;
    backup[strlen(backup) - 1] = 'q';
    if (vek_strcasecmp(path, backup) != 0 && !platform_same_file(path, backup))
        platform_remove_file(backup);
    return vorn_vek_copy_file2file(path, backup);
}

int vek_backup_file_silent(char *path)
{
    vek_file_verbose = false;
    int result = vek_backup_file(path);
    vek_file_verbose = true;
    return result;
}
