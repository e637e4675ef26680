// Creating, updating and saving the user's private configuration file.
//
// The old text is never only in memory: before the file is emptied a whole copy
// of it is on the disk, and that copy goes when the new text is there.

#include "config/private_file.h"
#include "config/config.h"
#include "files/files.h"
#include "host/hsk.h"
#include "host/message.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

static const char caller[] = "_vek_print_cfg_file";

static bool vek_cfg_warn_unwritable = true;

// The copy of the old text while an update goes on.  One that could not be put
// back is kept, and no update may write over it.
static char copy_path[VEK_PATH_SIZE];
static bool copy_is_kept;

bool is_save(const char *tag)
{
    return vek_strcasecmp(tag, "vorn_sav_cfg") == 0;
}

static int refuse(const char *path, const char *reason)
{
    report(REPORT_ERROR, caller, "Private cfg file %s could not be written: %s", path, reason);
    return 0;
}

static int refuse_to_open(const char *path)
{
    report(REPORT_PLAIN, caller, "ERROR: cannot open file %s", path);
    return 0;
}

static void tell_of_kept_copy()
{
    report(REPORT_ERROR, caller, "The previous text is kept in file %s.", copy_path);
}

// Until the user has taken the kept copy away, what the file holds is no text to
// go on from, nor one to make a backup of.
static bool waits_for_user()
{
    copy_is_kept = copy_is_kept && vek_file_exists(copy_path) != 0;
    if (copy_is_kept)
        tell_of_kept_copy();
    return copy_is_kept;
}

static int warn_of_unwritable_file(const char *path)
{
    if (vek_cfg_warn_unwritable) {
        report(REPORT_WARNING, caller, "Private cfg file %s is unwritable.", path);
        vek_warn(caller, "It will not be updated during the session.");
    }
    vek_cfg_warn_unwritable = false;
    return 0;
}

// Close a written file.  Result: the error that kept part of the text from the
// disk, or 0.  A stream forgets the reason of all but its last write.
static int finish(FILE *out)
{
    errno = 0;
    bool is_whole = platform_flush(out) && ferror(out) == 0;
    int reason = errno;
    if (fclose(out) != 0 && is_whole)
        return errno;
    return is_whole ? 0 : (reason == 0 ? EIO : reason);
}

static bool has_text(const char *path)
{
    FILE *file = platform_open_to_write(path, "a");
    bool result = file != nullptr && fseek(file, 0, SEEK_END) == 0 && ftell(file) > 0;
    if (file != nullptr)
        fclose(file);
    return result;
}

// Another process may have been here first, and text that can't be read is
// text all the same.  A part of a new file would be taken for the whole.
static int write_new_file(const char *path, const char *tag)
{
    if (has_text(path))
        return 1;
    FILE *out = platform_open_to_write(path, "w");
    if (out == nullptr)
        return refuse_to_open(path);
    write_all_sections(out, tag, nullptr);
    int error = finish(out);
    if (error == 0)
        return 1;
    platform_remove_file(path);
    return refuse(path, strerror(error));
}

// Copying does not tell of a copy that was cut short.
static bool copy_aside(char *path)
{
    const char *dir = vorn_vek_tmp_file_path();
    if (dir == nullptr || !text_join(copy_path, {dir, "tmp_cfg_file"}))
        return refuse(path, "There is no directory for temporary files") != 0;
    if (vorn_vek_copy_file2file_silent(path, copy_path) != 0)
        return false;
    if (vek_copy_error == 0)
        return true;
    refuse(path, strerror(vek_copy_error));
    vorn_vek_delete_file_silent(copy_path);
    return false;
}

static void put_back(char *path)
{
    if (vorn_vek_copy_file2file_silent(copy_path, path) == 0 && vek_copy_error == 0 &&
        platform_flush_file(path))
        return;
    copy_is_kept = true;
    tell_of_kept_copy();
}

// Closes both files.  Result: as that of finish.
static int write_text(FILE *out, FILE *old, const char *tag, const char *name)
{
    static char buffer[16384]; // most files go to the system in one piece
    setvbuf(out, buffer, _IOFBF, sizeof buffer);
    bool is_read =
        is_save(tag) ? write_all_sections(out, tag, old) : rewrite_text(out, old, tag, name);
    int error = finish(out);
    fclose(old);
    return error == 0 && !is_read ? EIO : error;
}

// A save writes text as the system has it; a rewrite keeps every byte.
static int write_over(char *path, const char *tag, const char *name)
{
    FILE *old = platform_open_to_read(copy_path, is_save(tag) ? "r" : "rb");
    if (old == nullptr)
        return refuse_to_open(copy_path);
    FILE *out = platform_open_to_write(path, is_save(tag) ? "w" : "wb");
    if (out == nullptr) {
        fclose(old);
        return refuse_to_open(path);
    }
    int error = write_text(out, old, tag, name);
    if (error == 0)
        return 1;
    refuse(path, strerror(error));
    put_back(path);
    return 0;
}

// `backup` is the path of a whole backup, or null.
static int replace_text(char *path, const char *backup, const char *tag, const char *name)
{
    if (!copy_aside(path))
        return 0;
    int result = platform_flush_file(backup == nullptr ? copy_path : backup)
                     ? write_over(path, tag, name)
                     : refuse(path, strerror(errno));
    if (!copy_is_kept)
        vorn_vek_delete_file_silent(copy_path);
    return result;
}

enum backup_wish { BACKUP_NONE, BACKUP_SILENT, BACKUP_TOLD };

// Whether there is a whole backup now.
static bool back_up(char *path, backup_wish wish)
{
    if (wish == BACKUP_NONE || vek_file_exists(path) == 0)
        return false;
    int result = wish == BACKUP_TOLD ? vek_backup_file(path) : vek_backup_file_silent(path);
    if (result == 0 && wish == BACKUP_TOLD)
        report(REPORT_PLAIN, "vorn_sav_cfg",
               "save configuration - backup created of previous configuration file %s\n", path);
    return result == 0 && vek_copy_error == 0;
}

// The file is held from before its backup to the end.
static int update(char *path, const char *tag, const char *name, backup_wish wish)
{
    if (waits_for_user())
        return 0;
    bool was_there = vek_file_exists(path) != 0;
    intptr_t hold = platform_hold_file(path);
    if (hold < 0 && wish != BACKUP_TOLD)
        return warn_of_unwritable_file(path);
    char backup[VEK_PATH_SIZE];
    text_copy(backup, path);
    turn_to_backup(backup);
    bool has_backup = was_there && back_up(path, wish);
    if (hold < 0)
        return warn_of_unwritable_file(path);
    int result = vek_strcasecmp(tag, "vek_chk_cfg_files") == 0
                     ? write_new_file(path, tag)
                     : replace_text(path, has_backup ? backup : nullptr, tag, name);
    platform_let_go(hold);
    return result;
}

int _vek_print_cfg_file(const char *tag, const char *path_given, const char *name)
{
    char path[VEK_PATH_SIZE];
    text_copy(path, text_or_empty(path_given));
    return update(path, tag, name, BACKUP_NONE);
}

int vorn_wrt_cfg(const char *tag, const char *name)
{
    const char *wish = getenv("KLV_UPDATE_CFG");
    if (wish != nullptr && strcmp(wish, "no") == 0)
        return 1;
    char path[VEK_PATH_SIZE];
    vek_private_cfg_path(path);
    return update(path, tag, name, BACKUP_SILENT);
}

int vorn_sav_cfg()
{
    char path[VEK_PATH_SIZE];
    vek_private_cfg_path(path);
    switch (vc_alert("alert",
                     "Private configuration file will be modified\n"
                     "             Choose write mode",
                     "Overwrite", "Backup", "Cancel", 2)) {
    case 1:
        return update(path, "vorn_sav_cfg", nullptr, BACKUP_NONE);
    case 2:
        return update(path, "vorn_sav_cfg", nullptr, BACKUP_TOLD);
    case 3:
        return -1;
    default:
        return 0;
    }
}
