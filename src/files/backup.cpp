// One previous version of a file, in the same directory.

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

static bool copy_and_sync(FILE *source, new_file *created)
{
    int error = copy_stream(source, created->stream);
    if (error == 0 && platform_sync_and_close(created))
        return true;
    errno = error == 0 ? errno : error;
    return false;
}

// The older backup is kept until the new one is whole and on the disk.
static bool replace_backup(FILE *source, const file_path *file, const file_path *backup)
{
    new_file created = {};
    if (strlen(backup->text) >= VEK_PATH_SIZE) {
        errno = ENAMETOOLONG;
        return false;
    }
    if (!platform_create_in_dir_of(&created, backup->text, NEW_FILE_PRIVATE, file->text, "wb"))
        return false;
    if (copy_and_sync(source, &created) && platform_replace(&created, backup->text))
        return platform_sync_dir_of(backup->text);
    platform_discard(&created);
    return false;
}

static int back_up_stream(FILE *source, file_path *file)
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
    FILE *source = file_path_is_usable(&file) ? platform_open_to_read(file.text) : nullptr;
    *unread = source == nullptr ? errno : 0;
    if (source == nullptr)
        return 1;
    int result = back_up_stream(source, &file);
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
