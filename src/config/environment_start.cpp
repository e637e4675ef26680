// How hosts start a session: product, mode, ENVIRONMENT statements, then the session start.

#include "config/config.h"
#include "host/message.h"
#include "host/plugin_list.h"
#include "hsk.h"
#include "text/text.h"

#include <cstring>

// What a solver passes as the name.
static const char solver_name[] = "f2c_vorn_vek_cfg_env_read";

static bool vek_first_env_read = true;

struct environment_start {
    bool is_solver;
    char name[VEK_START_NAME_SIZE]; // a copy: setting a variable may change the caller's string
    char shared[VEK_PATH_SIZE];
    char site[VEK_PATH_SIZE];
    char private_file[VEK_PATH_SIZE];
};

static void set_identity(bool is_solver)
{
    vek_set_product_name();
    if (!is_solver)
        return;
    vek_set_solver_mode(1);
    vc_str_print("");
}

static int report_long_name()
{
    report(REPORT_ABORT, "vorn_cfg_env_read", "plugin name too long (limit <%d chars)",
           VEK_START_NAME_SIZE);
    return -1;
}

// A variable keeps the value of the last file that sets it.  False, after a report, if a
// file could not be read or its last variable could not be set.
static bool read_product_files(environment_start *state)
{
    bool is_clean = vek_env_read(state->shared) == 0;
    if (state->site[0] != '\0' && vek_env_read(state->site) != 0)
        is_clean = false;
    if (vek_env_read(state->private_file) != 0)
        is_clean = false;
    if (is_clean)
        return true;
    constexpr const char *caller = "vorn_vek_cfg_env_read";
    report(REPORT_ERROR, caller, "%s session will not be configured properly.", state->name);
    vek_err(caller, "Recommend exiting and checking configuration files.");
    return false;
}

// Read the ENVIRONMENT statements of the plug-ins that the model names.  The product may
// be among the names; its files are not read again.  False if a file failed, as above.
static bool read_plugin_files(const char *product_name)
{
    char list[plugin_list_size];
    char name[plugin_list_size];
    char path[VEK_PATH_SIZE];
    bool is_clean = true;
    int handle = plugin_list_find(true);
    if (handle == 0)
        return true;
    plugin_list_fetch(handle, list);
    for (const char *rest = list; plugin_list_next(&rest, name);) {
        if (strcmp(name, product_name) == 0 || !find_plugin_file(path, name, true))
            continue;
        if (vek_env_read(path) != 0)
            is_clean = false;
    }
    return is_clean;
}

int vorn_vek_cfg_env_read(const char *name)
{
    environment_start state;
    name = text_or_empty(name);
    state.is_solver = strcmp(name, solver_name) == 0;
    if (vek_first_env_read)
        set_identity(state.is_solver);
    if (!text_copy(state.name, state.is_solver || *name == '\0' ? vek_product_name() : name))
        return report_long_name();
    if (vek_chk_cfg_files(state.name, state.shared, state.site, state.private_file) != 0) {
        vek_abort("vorn_cfg_env_read", "fatal configuration file error");
        return -1;
    }

    bool is_clean = true;
    if (vek_product_name_is(state.name) != 0)
        is_clean = read_product_files(&state);
    int result = 0;
    if (!state.is_solver)
        result = vorn_vek_init(state.name);
    else if (!read_plugin_files(state.name) || !is_clean)
        result = 1;
    bool is_first = vek_first_env_read;
    vek_first_env_read = false;
    if (is_first && state.is_solver)
        printenvars();
    return result;
}

int F2C_VORN_VEK_CFG_ENV_READ()
{
    return vorn_vek_cfg_env_read(solver_name);
}
