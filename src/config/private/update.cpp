// Creating, updating and saving the user's private configuration file.
//
// At any time the file has either its whole old text or its whole new text: for other
// programs that read it, and after a kill, a full disk or a power failure.  A file that
// cannot be replaced is overwritten instead.  Then a safety copy of its old text is on the
// disk until the new text is.

#include "config/config.h"
#include "config/private/private.h"
#include "host/environment.h"
#include "hsk.h"
#include "text/text.h"

// Returns 1 if the file was written or needs no update, 0 otherwise.
static int update(private_update *state)
{
    constexpr int max_tries = 5;
    update_result result = UPDATE_AGAIN;
    state->deadline = platform_clock() + 10000;
    for (int tries = 0; result == UPDATE_AGAIN && tries < max_tries; ++tries) {
        result = NOT_UPDATED;
        if (!lock_private_file(state)) {
            // without the lock, another process's change could be lost
        } else if (needs_no_update(state)) {
            result = UPDATED;
        } else if (back_up_private_file(state) && load_old_text(state)) {
            write_new_text(&state->text, &state->old, state->mode, state->name);
            if (write_new_file(state))                // in the same directory, and synced
                result = replace_private_file(state); // atomically, unless it has changed
        }
        remove_copies(state);
        unlock_private_file(state);
    }
    if (result == UPDATE_AGAIN)
        report_failure(state, "Another program keeps changing it");
    return result == UPDATED ? 1 : 0;
}

static write_mode mode_of(const char *tag)
{
    static const struct {
        const char *tag;
        write_mode mode;
    } modes[] = {{"vek_chk_cfg_files", WRITE_TEMPLATE},
                 {"vorn_sav_cfg", WRITE_SAVE},
                 {"vorn_vek_db_add", WRITE_ADDED},
                 {"vorn_vek_db_remove", WRITE_REMOVED}};
    for (const auto &known : modes)
        if (vek_strcasecmp(tag, known.tag) == 0)
            return known.mode;
    return WRITE_UPDATED;
}

// The strings are copied: they may be in buffers that are overwritten when a file is
// displayed by its name.  If `path` is null, it is that of the private file.
static void init_update(private_update *state, const char *path, write_mode mode, const char *name)
{
    *state = {};
    state->lock = -1;
    state->mode = mode;
    text_copy(state->name, text_or_empty(name));
    if (path != nullptr)
        text_copy(state->path, path);
    else
        vek_private_cfg_path(state->path);
}

int _vek_print_cfg_file(const char *tag, const char *path, const char *name)
{
    private_update state;
    init_update(&state, path, mode_of(tag), name);
    state.only_creates = state.mode == WRITE_TEMPLATE;
    return update(&state);
}

int vorn_wrt_cfg(const char *tag, const char *name)
{
    if (env_is("KLV_UPDATE_CFG", "no"))
        return 1;
    private_update state;
    init_update(&state, nullptr, mode_of(tag), name);
    state.backup = BACKUP_SILENT;
    return update(&state);
}

int vorn_sav_cfg()
{
    private_update state;
    init_update(&state, nullptr, WRITE_SAVE, nullptr);
    switch (vc_alert("alert",
                     "Private configuration file will be modified\n"
                     "             Choose write mode",
                     "Overwrite", "Backup", "Cancel", 2)) {
    case 1:
        return update(&state);
    case 2:
        state.backup = BACKUP_VERBOSE;
        return update(&state);
    case 3:
        return -1;
    default:
        return 0;
    }
}
