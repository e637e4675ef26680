// One previous version of a file, beside it.

#include "files/files.h"
#include "platform/durable.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstring>

void to_backup_path(char *path)
{
    size_t length = strlen(path);
    if (length > 0)
        path[length - 1] = 'q';
}

static bool copy_and_finish(FILE *source, new_file *made)
{
    int error = copy_stream(source, made->stream);
    if (error == 0 && platform_sync_and_close(made))
        return true;
    errno = error == 0 ? errno : error;
    return false;
}

// The older backup stays until the new one is whole and on the disk.
static bool replace_backup(FILE *source, const file_path *file, const file_path *backup)
{
    new_file made = {};
    if (strlen(backup->text) >= VEK_PATH_SIZE) {
        errno = ENAMETOOLONG;
        return false;
    }
    if (!platform_create_in_dir_of(&made, backup->text, NEW_FILE_PRIVATE, file->text, "wb"))
        return false;
    if (copy_and_finish(source, &made) && platform_replace(&made, backup->text))
        return platform_sync_dir_of(backup->text);
    platform_discard(&made);
    return false;
}

static int back_up(FILE *source, file_path *file)
{
    file_path backup;
    file_path_init(&backup, file->text);
    to_backup_path(backup.text);
    backup.given = backup.text;
    if (vek_strcasecmp(file->text, backup.text) == 0 || platform_same_file(file->text, backup.text))
        return report_same_file(&backup);
    if (!replace_backup(source, file, &backup))
        return report_copy_failure("Cannot create file", &backup);
    if (vek_file_verbose && vek_file_exists(backup.text) != 0)
        print_copied(file, &backup);
    return 0;
}

int backup_file(char *path, int *unread)
{
    file_path file;
    file_path_init(&file, path);
    FILE *source = platform_open_to_read(file.text);
    *unread = source == nullptr ? errno : 0;
    if (source == nullptr)
        return 1;
    int result = back_up(source, &file);
    fclose(source);
    return result;
}

int vek_backup_file(char *path)
{
    int unread;
    return backup_file(path, &unread);
}

int vek_backup_file_silent(char *path)
{
    vek_file_verbose = false;
    int result = vek_backup_file(path);
    vek_file_verbose = true;
    return result;
}
