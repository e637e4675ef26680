// The host's entry to a session: product, mode, ENVIRONMENT statements, start.

#include "config/config.h"
#include "host/hsk.h"
#include "host/message.h"
#include "host/plugin_list.h"
#include "text/text.h"

#include <cstring>

// What the solver passes for a name.
static const char solver_word[] = "f2c_vorn_vek_cfg_env_read";

static bool vek_first_env_read = true;

struct start_up {
    bool is_solver;
    char name[VEK_START_NAME_SIZE]; // a setting may change the text that the caller gave
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

static int refuse_long_name()
{
    report(REPORT_ABORT, "vorn_cfg_env_read", "plugin name too long (limit <%d chars)",
           VEK_START_NAME_SIZE);
    return -1;
}

// A later file's value wins, as it reaches the environment later.  False if
// one of the passes failed.
static bool read_product_files(start_up *now)
{
    bool is_good = vek_env_read(now->shared) == 0;
    if (now->site[0] != '\0' && vek_env_read(now->site) != 0)
        is_good = false;
    if (vek_env_read(now->private_file) != 0)
        is_good = false;
    if (is_good)
        return true;
    constexpr const char *caller = "vorn_vek_cfg_env_read";
    report(REPORT_ERROR, caller, "%s session will not be configured properly.", now->name);
    vek_err(caller, "Recommend exiting and checking configuration files.");
    return false;
}

static bool read_plugin_files(const char *working_name)
{
    char list[plugin_list_size];
    char name[plugin_list_size];
    char path[VEK_PATH_SIZE];
    bool is_good = true;
    int handle = plugin_list_find(true);
    if (handle == 0)
        return true;
    plugin_list_fetch(handle, list);
    for (const char *rest = list; plugin_list_next(&rest, name);) {
        if (strcmp(name, working_name) == 0 || !find_plugin_file(path, name, true))
            continue;
        if (vek_env_read(path) != 0)
            is_good = false;
    }
    return is_good;
}

int vorn_vek_cfg_env_read(const char *name)
{
    start_up now;
    name = text_or_empty(name);
    now.is_solver = strcmp(name, solver_word) == 0;
    if (vek_first_env_read)
        set_identity(now.is_solver);
    if (!text_copy(now.name, now.is_solver || *name == '\0' ? vek_product_name() : name))
        return refuse_long_name();
    if (vek_chk_cfg_files(now.name, now.shared, now.site, now.private_file) != 0) {
        vek_abort("vorn_cfg_env_read", "fatal configuration file error");
        return -1;
    }

    bool is_good = true;
    if (vek_product_name_is(now.name) != 0)
        is_good = read_product_files(&now);
    int result = 0;
    if (!now.is_solver)
        result = vorn_vek_init(now.name);
    else if (!read_plugin_files(now.name) || !is_good)
        result = 1;
    bool is_first = vek_first_env_read;
    vek_first_env_read = false;
    if (is_first && now.is_solver)
        printenvars();
    return result;
}

int F2C_VORN_VEK_CFG_ENV_READ()
{
    return vorn_vek_cfg_env_read(solver_word);
}
