// The start of a session, or of a plug-in in a running session.

#include "config/config.h"
#include "host/message.h"
#include "hsk.h"
#include "records.h"
#include "text/text.h"

#include <cstring>

int vek_private_cfg_index;

static bool vek_first_start = true;

static const char caller[] = "vek_init";

struct session_start {
    const char *name;
    bool is_product;
    char files[VEK_CFG_FILE_COUNT][VEK_CFG_PATH_SIZE];
    char private_file[VEK_PATH_SIZE];
};

// Store the shared and the site file in their slots.  Returns the result of
// vek_chk_cfg_files.
static int find_files(session_start *state)
{
    char shared[VEK_PATH_SIZE];
    char site[VEK_PATH_SIZE];
    int result = vek_chk_cfg_files(state->name, shared, site, state->private_file);
    if (result != 0)
        return result;
    text_copy(state->files[0], shared);
    vek_cfg_count = 1;
    if (site[0] != '\0')
        text_copy(state->files[vek_cfg_count++], site);
    return 0;
}

static void add_private_file(session_start *state)
{
    report_safety_copy(state->private_file);
    vek_private_cfg_index = vek_cfg_count;
    text_copy(state->files[vek_cfg_count++], state->private_file);
}

// Read each file.  Returns whether all were free of errors.
static bool read_files(session_start *state)
{
    bool is_clean = true;
    for (int slot = 0; slot < vek_cfg_count; ++slot) {
        char *file = state->files[slot];
        if (!state->is_product && vek_solver_mode() == 0 && vek_env_read(file) != 0)
            is_clean = false;
        if (vek_cfg_read(file, vek_next_cfg_index) != 0)
            is_clean = false;
        if (!cfg_index_assign(file))
            is_clean = false;
    }
    return is_clean;
}

static bool create_table_directories(session_start *state)
{
    return vek_first_start ? vek_upd_all_vek_tbls(state->files) == 0
                           : vek_upd_plg_vek_tbls(state->files) == 0;
}

static bool has_databases_with_tables()
{
    if (db_count() < 1) {
        vek_err(caller, "No vek's initialized. Aborting...");
        return false;
    }
    bool result = true;
    for (int level = 1; level <= db_count(); ++level) {
        if (db_at(level)->tbl_count >= 1)
            continue;
        report(REPORT_ERROR, caller, "No tables in vek '%s'. Aborting...", db_at(level)->name);
        result = false;
    }
    return result;
}

static bool has_equal_table_counts()
{
    bool result = true;
    const vek_db_rec *first = db_at(1);
    for (int level = 2; level <= db_count(); ++level) {
        const vek_db_rec *other = db_at(level);
        if (other->cfg_index > vek_private_cfg_index || other->tbl_count == first->tbl_count)
            continue;
        report(REPORT_ERROR, caller, "Number of tables in vek '%s' and '%s' differ. Aborting...",
               first->name, other->name);
        result = false;
    }
    return result;
}

static void show_missing_write_default(const char *private_file)
{
    char message[2 * VEK_PATH_SIZE];
    text_join(message, {"No default writable database exists; ensure a valid \n"
                        "DEFAULT_WRITE_DB definition exists in your private config file\n'",
                        private_file, "'"});
    vc_alert("error", message, "", "Exit The Session", "", 2);
    report(REPORT_ABORT, caller, "%s", message);
}

// Returns 0, 1 if databases or tables are missing or the table counts differ, or -1 if
// there is no default writable database.
static int check_databases(const session_start *state)
{
    int result = has_databases_with_tables() ? 0 : 1;
    if (vek_first_start && result == 0 && !has_equal_table_counts())
        result = 1;
    if (vorn_vek_get_write_default() == nullptr && vek_solver_mode() == 0) {
        show_missing_write_default(state->private_file);
        result = -1;
    }
    return result;
}

int vorn_vek_init(const char *name)
{
    session_start state = {};
    state.name = text_or_empty(name);
    state.is_product = vek_product_name_is(state.name) != 0;
    if (vek_first_start) {
        vek_set_number_of_veks(0);
        if (!state.is_product)
            vc_str_print("");
    }

    int found = find_files(&state);
    if (found == 2)
        return 0;
    if (found != 0) {
        vek_abort("vorn_vek_init", "fatal configuration file error");
        return -1;
    }
    if (vek_first_start)
        add_private_file(&state);

    bool is_clean = read_files(&state);
    if (!create_table_directories(&state) || !is_clean) {
        vek_warn(caller, "Possible syntax problem in the configuration file(s).");
        vek_warn(caller, "Continuing initialization of VEK Databases...");
    }
    int result = check_databases(&state);
    vek_first_start = false;
    return result;
}
