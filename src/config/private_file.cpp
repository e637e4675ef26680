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
#include <cstdio>
#include <cstdlib>
#include <cstring>

static const char caller[] = "_vek_print_cfg_file";

static bool vek_cfg_warn_unwritable = true;

// The copy of the old text while an update goes on.  One that could not be put
// back is kept, and no update may write over it.
static char copy_path[VEK_PATH_SIZE];
static bool copy_is_kept;

// The new text until it is whole.
static char fresh_path[VEK_PATH_SIZE];

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
    private_path whole = {path, ""};
    if (*path == '\0') // too long to be kept
        whole = private_path_whole();
    if (vek_cfg_warn_unwritable) {
        report(REPORT_WARNING, caller, "Private cfg file %s%s is unwritable.", whole.start,
               whole.end);
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

// The operations on files turn "\" in what they are given.
static int copy_silently(const char *from, const char *to)
{
    char source[VEK_PATH_SIZE];
    char target[VEK_PATH_SIZE];
    text_copy(source, from);
    text_copy(target, to);
    int result = vorn_vek_copy_file2file_silent(source, target);
    return result == 0 && vek_copy_error == 0 ? 0 : 1;
}

static void delete_copy()
{
    char path[VEK_PATH_SIZE];
    text_copy(path, copy_path);
    vorn_vek_delete_file_silent(path);
}

// Write the new text, whole, to a file of its own, and open that for reading;
// null, with a report, if it can't be done.
static FILE *compose(const char *path, FILE *old, const char *tag, const char *name)
{
    FILE *out = platform_open_to_write(fresh_path, is_save(tag) ? "w" : "wb");
    if (out == nullptr) {
        refuse(path, strerror(errno));
        return nullptr;
    }
    bool is_read =
        is_save(tag) ? write_all_sections(out, tag, old) : rewrite_text(out, old, tag, name);
    int error = finish(out);
    if (error == 0 && !is_read)
        error = EIO;
    FILE *fresh = error == 0 ? platform_open_to_read(fresh_path, "rb") : nullptr;
    if (fresh == nullptr)
        refuse(path, strerror(error == 0 ? errno : error));
    return fresh;
}

// Between the emptying of the file and its new text there is one write, unless
// the text is very long.  Closes `fresh`.  Result: 0 done; else the error, -1 if
// the file did not open and is as it was.
static int pour(FILE *fresh, const char *path)
{
    static char block[16384];
    size_t length = platform_read(fresh, block, sizeof block);
    FILE *out = ferror(fresh) == 0 ? platform_open_to_write(path, "wb") : nullptr;
    int error = out == nullptr ? -1 : 0;
    if (out != nullptr)
        setvbuf(out, nullptr, _IONBF, 0);
    for (; error == 0 && length > 0; length = platform_read(fresh, block, sizeof block))
        if (fwrite(block, 1, length, out) < length)
            error = errno;
    if (error == 0 && ferror(fresh) != 0)
        error = EIO;
    fclose(fresh);
    int last = out == nullptr ? 0 : finish(out);
    return error == 0 ? last : error;
}

// The result of an update for that of pour; a failure is told.
static int told(const char *path, int error)
{
    if (error < 0)
        return refuse_to_open(path);
    return error == 0 ? 1 : refuse(path, strerror(error));
}

// The length of a file's text; -1 if the system does not tell.  A file that can't
// be read may still be open for its end to be found.
static long length_of_text(const char *path)
{
    FILE *file = platform_open_to_read(path, "rb");
    if (file == nullptr)
        file = platform_open_to_write(path, "a");
    long length = file != nullptr && fseek(file, 0, SEEK_END) == 0 ? ftell(file) : -1;
    if (file != nullptr)
        fclose(file);
    return length;
}

// Another process may have been here first, and text that can't be read is
// text all the same.  The new text goes out by one write.
static int write_new_file(const char *path, const char *tag)
{
    static char block[16384];
    long length = length_of_text(path);
    if (length != 0)
        return length > 0 ? 1 : refuse(path, strerror(errno));
    FILE *out = platform_open_to_write(path, "w");
    if (out == nullptr)
        return refuse_to_open(path);
    setvbuf(out, block, _IOFBF, sizeof block);
    write_all_sections(out, tag, nullptr);
    return told(path, finish(out));
}

// Copying does not tell of a copy that was cut short.
static bool copy_aside(const char *path)
{
    if (copy_silently(path, copy_path) == 0)
        return true;
    if (vek_copy_error != 0) {
        refuse(path, strerror(vek_copy_error));
        delete_copy();
    }
    return false;
}

static void put_back(const char *path)
{
    if (copy_silently(copy_path, path) == 0 && platform_flush_file(path))
        return;
    copy_is_kept = true;
    tell_of_kept_copy();
}

// `standing` is the path of what stands for the old text meanwhile.
static int write_over(const char *path, const char *standing, const char *tag, const char *name)
{
    FILE *old = platform_open_to_read(copy_path, is_save(tag) ? "r" : "rb");
    if (old == nullptr)
        return refuse_to_open(copy_path);
    FILE *fresh = compose(path, old, tag, name);
    fclose(old);
    if (fresh == nullptr)
        return 0;
    if (!platform_flush_file(standing)) {
        int error = errno;
        fclose(fresh);
        return refuse(path, strerror(error));
    }
    int error = pour(fresh, path);
    int result = told(path, error);
    if (error > 0)
        put_back(path);
    return result;
}

// `backup` is the path of a whole backup, or null.
static int replace_text(const char *path, const char *backup, const char *tag, const char *name)
{
    if (!copy_aside(path))
        return 0;
    int result = write_over(path, backup == nullptr ? copy_path : backup, tag, name);
    if (!copy_is_kept)
        delete_copy();
    return result;
}

// A copy that is there may be the only whole text of somebody's file: of a
// process that was killed, or that keeps it for its user.
static bool spare_copy_of_others()
{
    if (vek_file_exists(copy_path) == 0)
        return true;
    for (int number = 1; number < 1000; ++number) {
        char spared[VEK_PATH_SIZE + 4];
        snprintf(spared, sizeof spared, "%s.%d", copy_path, number);
        if (platform_rename(copy_path, spared))
            return true;
        if (errno != EEXIST)
            return false;
    }
    return false; // not reached: nobody keeps a thousand copies
}

// A new file needs no others.  The directory for temporary files is held by those
// who share it.
static int write_held(const char *path, const char *backup, const char *tag, const char *name)
{
    if (vek_strcasecmp(tag, "vek_chk_cfg_files") == 0)
        return write_new_file(path, tag);
    const char *dir = vorn_vek_tmp_file_path();
    if (dir == nullptr || !text_join(copy_path, {dir, "tmp_cfg_file"}) ||
        !text_join(fresh_path, {dir, "new_cfg_file"}))
        return refuse(path, "There is no directory for temporary files");
    int result = 0;
    intptr_t hold = platform_hold_temporary_dir();
    if (spare_copy_of_others())
        result = replace_text(path, backup, tag, name);
    else
        refuse(path, strerror(errno));
    platform_remove_file(fresh_path);
    platform_let_temporary_dir_go(hold);
    return result;
}

enum backup_wish { BACKUP_NONE, BACKUP_SILENT, BACKUP_TOLD };

static bool refuse_backup(const char *backup, int error)
{
    report(REPORT_ERROR, "vorn_sav_cfg", "Cannot create file '%s' : %s", backup, strerror(error));
    return false;
}

// Whether there is a whole backup now; if not, there is a report.  A file without
// text, such as a killed process leaves, is not put in the place of an older backup.
static bool back_up(const char *path, const char *backup, backup_wish wish)
{
    if (length_of_text(path) == 0)
        return false;
    constexpr int not_begun = -1;
    char given[VEK_PATH_SIZE];
    text_copy(given, path);
    vek_copy_error = not_begun;
    int result = wish == BACKUP_TOLD ? vek_backup_file(given) : vek_backup_file_silent(given);
    if (vek_copy_error != 0)
        return refuse_backup(backup, vek_copy_error == not_begun ? errno : vek_copy_error);
    if (result == 0 && wish == BACKUP_TOLD)
        report(REPORT_PLAIN, "vorn_sav_cfg",
               "save configuration - backup created of previous configuration file %s\n", path);
    return result == 0;
}

// The file is held from before its backup to the end.  One that only the hold
// has made goes if nothing comes of it.  The name is copied: it may lie in a
// buffer that naming a file overwrites.
static int update(const char *path, const char *tag, const char *name_given, backup_wish wish)
{
    char name[VEK_PATH_SIZE];
    char backup[VEK_PATH_SIZE];
    if (waits_for_user())
        return 0;
    text_copy(name, text_or_empty(name_given));
    text_copy(backup, path);
    turn_to_backup(backup);
    bool is_new = false;
    intptr_t hold = platform_hold_file(path, &is_new);
    if (hold < 0) {
        // What can't be written can still be read.
        if (wish == BACKUP_TOLD && errno != ENXIO && vek_file_exists(path) != 0)
            back_up(path, backup, wish);
        return warn_of_unwritable_file(path);
    }
    bool wants_backup = wish != BACKUP_NONE && !is_new;
    int reason = wants_backup && vek_file_exists(path) == 0 ? errno : 0;
    bool has_backup = wants_backup && reason == 0 && back_up(path, backup, wish);
    int result = write_held(path, has_backup ? backup : nullptr, tag, name);
    if (result != 0 && reason != 0) // else it is told that the file can't be read
        refuse_backup(backup, reason);
    if (result == 0 && is_new)
        platform_let_go_and_remove(hold, path);
    else
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
