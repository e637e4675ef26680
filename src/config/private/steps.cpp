// The steps of an update of the private file.

#include "config/config.h"
#include "config/private/private.h"
#include "files/files.h"
#include "host/message.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstring>

static const char caller[] = "_vek_print_cfg_file";

bool report_failure(const private_update *now, const char *reason)
{
    report(REPORT_ERROR, caller, "Private cfg file %s could not be written: %s", now->path, reason);
    return false;
}

static bool report_unopened(const char *path)
{
    report(REPORT_PLAIN, caller, "ERROR: cannot open file %s", path);
    return false;
}

static void report_kept_text(const char *copy)
{
    if (copy != nullptr)
        report(REPORT_ERROR, caller, "The previous text is kept in file %s.", copy);
}

void report_lost_text(const char *path)
{
    char target[4096];
    if (!platform_follow_links(path, target, sizeof target) ||
        overwrite_kept_copy(target) == nullptr)
        return;
    intptr_t lock = platform_lock_file(path, 0);
    if (lock >= 0 || errno != ETIMEDOUT) // else an update is going on
        report_kept_text(overwrite_kept_copy(target));
    if (lock >= 0)
        platform_unlock(lock);
}

static bool warn_of_unwritable_file(const char *path)
{
    static bool vek_cfg_warn_unwritable = true;
    private_path whole = {path, ""};
    if (*path == '\0') // too long to be kept
        whole = private_path_whole();
    if (vek_cfg_warn_unwritable) {
        report(REPORT_WARNING, caller, "Private cfg file %s%s is unwritable.", whole.start,
               whole.end);
        vek_warn(caller, "It will not be updated during the session.");
    }
    vek_cfg_warn_unwritable = false;
    return false;
}

static bool find_backup(const private_update *now, char (&backup)[VEK_PATH_SIZE])
{
    text_copy(backup, now->path);
    to_backup_path(backup);
    return vek_strcasecmp(now->path, backup) != 0; // else it is its own
}

static bool make_backup(private_update *now)
{
    char path[VEK_PATH_SIZE];
    text_copy(path, now->path);
    vek_file_verbose = now->backup == BACKUP_VERBOSE;
    int result = backup_file(path, &now->unread);
    vek_file_verbose = true;
    return result == 0;
}

static bool back_up_for_user(private_update *now)
{
    char backup[VEK_PATH_SIZE];
    if (!make_backup(now))
        return now->unread != 0 || !find_backup(now, backup) ||
               report_failure(now, "The backup could not be made");
    if (now->backup == BACKUP_VERBOSE)
        report(REPORT_PLAIN, "vorn_sav_cfg",
               "save configuration - backup created of previous configuration file %s\n",
               now->path);
    now->backup = BACKUP_REPEATED;
    return true;
}

// A file without text, such as a lost one, does not take the place of a backup
// that has some.
static bool has_lost_its_text(const private_update *now)
{
    char backup[VEK_PATH_SIZE];
    file_state state;
    return now->read.size == 0 && find_backup(now, backup) && platform_file_state(backup, &state) &&
           state.size > 0;
}

// An update goes on without the backup that could not be made.
bool back_up(private_update *now)
{
    if (now->backup == BACKUP_VERBOSE || now->backup == BACKUP_REPEATED)
        return back_up_for_user(now);
    if (now->backup == BACKUP_SILENT && !has_lost_its_text(now))
        make_backup(now);
    return true;
}

// The file did not open for its backup, but does for the new text.
static bool report_unread(const private_update *now)
{
    char backup[VEK_PATH_SIZE];
    find_backup(now, backup);
    report(REPORT_ERROR, "vorn_sav_cfg", "Cannot create file '%s' : %s", backup,
           strerror(now->unread));
    return now->backup == BACKUP_SILENT || report_failure(now, "The backup could not be made");
}

// What can't be written can still be read.
static bool report_unlocked(private_update *now)
{
    if (errno == ETIMEDOUT)
        return report_failure(now, "Another process has kept it locked for 10 seconds");
    if (now->backup != BACKUP_VERBOSE || errno == ENXIO || back_up(now))
        warn_of_unwritable_file(now->path);
    return false;
}

// A file that does not exist yet can't be locked: who is second to create it
// begins again.  The text that a killed or failed update has left elsewhere is
// the user's, who has to take it before there can be another update.
bool lock_file(private_update *now)
{
    errno = ENAMETOOLONG;
    now->lock = *now->path == '\0' ? -1 : platform_lock_file(now->path, now->deadline);
    if (now->lock < 0 && errno != ENOENT)
        return report_unlocked(now);
    now->read = {};
    if ((now->lock >= 0 && !platform_file_state(now->path, &now->read)) ||
        !platform_follow_links(now->path, now->target, sizeof now->target))
        return report_failure(now, strerror(errno));
    const char *copy = now->lock < 0 ? nullptr : overwrite_find_loss(now->target);
    report_kept_text(copy);
    return copy == nullptr;
}

bool is_there_already(const private_update *now)
{
    return now->only_creates && now->read.size > 0;
}

static bool copy_old_text(private_update *now)
{
    int error = 0;
    int result = copy_file_silently(now->path, now->copy, &error);
    if (result != 0) {
        platform_remove_file(now->copy); // which may be there, empty
        now->copy[0] = '\0';
    }
    return result == 0 && (error == 0 || report_failure(now, strerror(error)));
}

static bool lock_temp_dir(private_update *now)
{
    constexpr const char *reason = "Another process has kept its files locked for 10 seconds";
    now->temp_lock = platform_lock_temp_dir();
    return now->temp_lock >= 0 || report_failure(now, reason);
}

bool save_copy(private_update *now)
{
    if (now->lock < 0)
        return true;
    if (now->mode == WRITE_TEMPLATE)
        return now->unread == 0 || report_failure(now, strerror(now->unread));
    if (!lock_temp_dir(now))
        return false; // not reached: this process shares the directory only on Windows
    const char *dir = vorn_vek_tmp_file_path();
    if (dir == nullptr || !text_join(now->copy, {dir, "tmp_cfg_file"}))
        return report_failure(now, "There is no directory for temporary files");
    if (!copy_old_text(now))
        return false;
    if (!load_text(&now->old, now->copy))
        return report_unopened(now->copy);
    if (!now->old.is_whole)
        return report_failure(now, strerror(EIO));
    return now->unread == 0 || report_unread(now);
}

static const char *mode_letters(const private_update *now, bool creates)
{
    bool as_text = now->mode == WRITE_TEMPLATE || now->mode == WRITE_SAVE;
    if (creates)
        return as_text ? "w" : "wb";
    return as_text ? "r+" : "r+b";
}

static bool opens_for_writing(const private_update *now)
{
    FILE *file = platform_open_to_write(now->path, mode_letters(now, false));
    if (file == nullptr)
        return report_unopened(now->path);
    fclose(file);
    return true;
}

bool write_new_file(private_update *now)
{
    const bool is_new = now->lock < 0;
    if (now->text.is_cut)
        return report_failure(now, strerror(ENOMEM));
    if (!is_new && !opens_for_writing(now))
        return false;
    if (!platform_create_beside(&now->made, now->target, is_new ? NEW_FILE : NEW_FILE_EXACT,
                                now->target, mode_letters(now, true))) {
        if (is_new)
            return warn_of_unwritable_file(now->path);
        return platform_must_overwrite() || report_failure(now, strerror(errno));
    }
    if (platform_write(now->made.stream, now->text.bytes, now->text.length) &&
        platform_finish(&now->made))
        return true;
    return report_failure(now, strerror(errno));
}

static bool put_in_place(private_update *now, const char **left)
{
    if (now->lock < 0)
        return platform_place(&now->made, now->target);
    if (now->made.path[0] != '\0') {
        if (platform_replace(&now->made, now->target))
            return true;
        if (!platform_must_overwrite())
            return false;
    }
    return overwrite_file(now->target, mode_letters(now, false), now->text.bytes, now->text.length,
                          left);
}

// Nobody is told of a failure before the file has its old text again.
update_result replace(private_update *now)
{
    file_state present = {};
    platform_file_state(now->path, &present);
    if (!platform_same_state(&present, &now->read))
        return UPDATE_AGAIN;
    const char *left = nullptr; // a copy of the old text
    if (put_in_place(now, &left) && platform_sync_dir_of(now->target))
        return UPDATED;
    if (now->lock < 0 && errno == EEXIST)
        return UPDATE_AGAIN;
    report_failure(now, strerror(errno));
    report_kept_text(left);
    return NOT_UPDATED;
}

void remove_copies(private_update *now)
{
    char path[VEK_PATH_SIZE];
    text_copy(path, now->copy);
    platform_discard(&now->made);
    builder_release(&now->text);
    release_text(&now->old);
    if (path[0] != '\0')
        vorn_vek_delete_file_silent(path);
    now->old = {};
    now->copy[0] = '\0';
}

void unlock_file(private_update *now)
{
    platform_unlock_temp_dir(now->temp_lock);
    if (now->lock >= 0)
        platform_unlock(now->lock);
    now->temp_lock = 0;
    now->lock = -1;
}
