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

bool report_failure(const private_update *state, const char *reason)
{
    report(REPORT_ERROR, caller, "Private cfg file %s could not be written: %s", state->path,
           reason);
    return false;
}

static bool report_not_opened(const char *path)
{
    print_line("ERROR: cannot open file %s", path);
    return false;
}

static void report_copy_path(const char *copy)
{
    if (copy != nullptr)
        report(REPORT_ERROR, caller, "The previous text is kept in file %s.", copy);
}

void report_safety_copy(const char *path)
{
    char target[4096];
    if (!platform_follow_links(path, target, sizeof target) || find_safety_copy(target) == nullptr)
        return;
    intptr_t lock = platform_lock_file(path, 0);
    if (lock >= 0 || errno != ETIMEDOUT) // otherwise an update is in progress
        report_copy_path(find_safety_copy(target));
    if (lock >= 0)
        platform_unlock(lock);
}

static bool warn_of_unwritable_file(const char *path)
{
    static bool vek_cfg_warn_unwritable = true;
    private_path whole = {path, ""};
    if (*path == '\0') // too long for `path`
        whole = private_path_parts();
    if (vek_cfg_warn_unwritable) {
        report(REPORT_WARNING, caller, "Private cfg file %s%s is unwritable.", whole.start,
               whole.end);
        vek_warn(caller, "It will not be updated during the session.");
    }
    vek_cfg_warn_unwritable = false;
    return false;
}

// Set `backup` to the path of the backup.  False if that is the file itself.
static bool find_backup(const private_update *state, char (&backup)[VEK_PATH_SIZE])
{
    text_copy(backup, state->path);
    to_backup_path(backup);
    return vek_strcasecmp(state->path, backup) != 0;
}

static bool make_backup(private_update *state)
{
    char path[VEK_PATH_SIZE];
    text_copy(path, state->path);
    vek_file_verbose = state->backup == BACKUP_VERBOSE;
    int result = backup_file(path, &state->unread);
    vek_file_verbose = true;
    return result == 0;
}

// Returns true also if the file does not open, or if it is its own backup.
static bool back_up_for_user(private_update *state)
{
    char backup[VEK_PATH_SIZE];
    if (!make_backup(state))
        return state->unread != 0 || !find_backup(state, backup) ||
               report_failure(state, "The backup could not be made");
    if (state->backup == BACKUP_VERBOSE)
        print_line("save configuration - backup created of previous configuration file %s\n",
                   state->path);
    state->backup = BACKUP_REPEATED;
    return true;
}

// An empty file, for instance one that lost its text, must not replace a backup that
// has text.
static bool is_empty_unlike_backup(const private_update *state)
{
    char backup[VEK_PATH_SIZE];
    file_state found;
    return state->read.size == 0 && find_backup(state, backup) &&
           platform_file_state(backup, &found) && found.size > 0;
}

// A silent backup is optional: the update continues if it fails.
bool back_up_private_file(private_update *state)
{
    if (state->backup == BACKUP_VERBOSE || state->backup == BACKUP_REPEATED)
        return back_up_for_user(state);
    if (state->backup == BACKUP_SILENT && !is_empty_unlike_backup(state))
        make_backup(state);
    return true;
}

// For a file that did not open for its backup, but opened for the new text.
static bool report_unread(const private_update *state)
{
    char backup[VEK_PATH_SIZE];
    find_backup(state, backup);
    report(REPORT_ERROR, "vorn_sav_cfg", "Cannot create file '%s' : %s", backup,
           strerror(state->unread));
    return state->backup == BACKUP_SILENT || report_failure(state, "The backup could not be made");
}

// A file that can't be written can still be backed up.
static bool report_unlocked(private_update *state)
{
    if (errno == ETIMEDOUT)
        return report_failure(state, "Another process has kept it locked for 10 seconds");
    if (state->backup != BACKUP_VERBOSE || errno == ENXIO || back_up_private_file(state))
        warn_of_unwritable_file(state->path);
    return false;
}

// A file that does not exist yet can't be locked.  If two processes create it, the second
// one starts the update again.  If a killed or failed update left a safety copy, there is
// no update until the user has recovered it.
bool lock_private_file(private_update *state)
{
    errno = ENAMETOOLONG;
    state->lock = *state->path == '\0' ? -1 : platform_lock_file(state->path, state->deadline);
    if (state->lock < 0 && errno != ENOENT)
        return report_unlocked(state);
    state->read = {};
    if ((state->lock >= 0 && !platform_file_state(state->path, &state->read)) ||
        !platform_follow_links(state->path, state->target, sizeof state->target))
        return report_failure(state, strerror(errno));
    const char *copy = state->lock < 0 ? nullptr : find_needed_safety_copy(state->target);
    report_copy_path(copy);
    return copy == nullptr;
}

bool needs_no_update(const private_update *state)
{
    return state->only_creates && state->read.size > 0;
}

static bool copy_to_temp_file(private_update *state)
{
    int error = 0;
    int result = copy_file_silently(state->path, state->copy, &error);
    if (result != 0) {
        platform_remove_file(state->copy); // may exist, empty
        state->copy[0] = '\0';
    }
    return result == 0 && (error == 0 || report_failure(state, strerror(error)));
}

// Fails only where processes share the directory, which is on Windows.
static bool lock_temp_dir(private_update *state)
{
    constexpr const char *reason = "Another process has kept its files locked for 10 seconds";
    state->temp_lock = platform_lock_temp_dir();
    return state->temp_lock >= 0 || report_failure(state, reason);
}

// Copy the old text to a temporary file, and load that.
static bool copy_and_load_old_text(private_update *state)
{
    const char *dir = vorn_vek_tmp_file_path();
    if (dir == nullptr || !text_join(state->copy, {dir, "tmp_cfg_file"}))
        return report_failure(state, "There is no directory for temporary files");
    if (!copy_to_temp_file(state))
        return false;
    if (!load_text(&state->old, state->copy))
        return report_not_opened(state->copy);
    if (!state->old.is_whole)
        return report_failure(state, strerror(EIO));
    return state->unread == 0 || report_unread(state);
}

bool load_old_text(private_update *state)
{
    if (state->lock < 0)
        return true;
    if (state->mode == WRITE_TEMPLATE)
        return state->unread == 0 || report_failure(state, strerror(state->unread));
    return lock_temp_dir(state) && copy_and_load_old_text(state);
}

static const char *mode_letters(const private_update *state, bool creates)
{
    bool as_text = state->mode == WRITE_TEMPLATE || state->mode == WRITE_SAVE;
    if (creates)
        return as_text ? "w" : "wb";
    return as_text ? "r+" : "r+b";
}

static bool opens_for_writing(const private_update *state)
{
    FILE *file = platform_open_to_write(state->path, mode_letters(state, false));
    if (file == nullptr)
        return report_not_opened(state->path);
    fclose(file);
    return true;
}

bool write_new_file(private_update *state)
{
    const bool is_new = state->lock < 0;
    if (state->text.is_truncated)
        return report_failure(state, strerror(ENOMEM));
    if (!is_new && !opens_for_writing(state))
        return false;
    if (!platform_create_in_dir_of(&state->created, state->target,
                                   is_new ? NEW_FILE : NEW_FILE_EXACT, state->target,
                                   mode_letters(state, true))) {
        if (is_new)
            return warn_of_unwritable_file(state->path);
        return platform_must_overwrite() || report_failure(state, strerror(errno));
    }
    if (platform_write(state->created.stream, state->text.bytes, state->text.length) &&
        platform_sync_and_close(&state->created))
        return true;
    return report_failure(state, strerror(errno));
}

static bool replace_or_create(private_update *state, const char **left)
{
    if (state->lock < 0)
        return platform_create_from(&state->created, state->target);
    if (state->created.path[0] != '\0') {
        if (platform_replace(&state->created, state->target))
            return true;
        if (!platform_must_overwrite())
            return false;
    }
    return overwrite_file(state->target, mode_letters(state, false), state->text.bytes,
                          state->text.length, left);
}

// A failure is reported after the old text is restored.
update_result replace_private_file(private_update *state)
{
    file_state present = {};
    platform_file_state(state->path, &present);
    if (!platform_same_state(&present, &state->read))
        return UPDATE_AGAIN;
    const char *left = nullptr; // path of a safety copy
    if (replace_or_create(state, &left) && platform_sync_dir_of(state->target))
        return UPDATED;
    if (state->lock < 0 && errno == EEXIST)
        return UPDATE_AGAIN;
    report_failure(state, strerror(errno));
    report_copy_path(left);
    return NOT_UPDATED;
}

void remove_copies(private_update *state)
{
    char path[VEK_PATH_SIZE];
    text_copy(path, state->copy);
    platform_discard(&state->created);
    builder_release(&state->text);
    release_text(&state->old);
    if (path[0] != '\0')
        vorn_vek_delete_file_silent(path);
    state->old = {};
    state->copy[0] = '\0';
}

void unlock_private_file(private_update *state)
{
    platform_unlock_temp_dir(state->temp_lock);
    if (state->lock >= 0)
        platform_unlock(state->lock);
    state->temp_lock = 0;
    state->lock = -1;
}
