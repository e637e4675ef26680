// Settings and the process environment.

#include "hsk.h"
#include "hsk_control.h"

#include <stdlib.h>

static const int defaults_handle = 1;
static const int setting_count = 512;

static int gui_threshold = 1;
static int settings[setting_count]; // by id

int vc_putenv(const char *name, const char *value)
{
    if (!name || !value)
        return 1;
#ifdef _WIN32
    return _putenv_s(name, value) == 0 ? 0 : 1;
#else
    return setenv(name, value, 1) == 0 ? 0 : 1;
#endif
}

int msg_get_gui_threshold()
{
    return gui_threshold;
}

void msg_set_gui_threshold(int threshold)
{
    gui_threshold = threshold;
}

int default_current_defaults()
{
    return defaults_handle;
}

// Returns null if the handle or the id is unknown.
static int *setting(int defaults, int id)
{
    bool known = defaults == defaults_handle && id >= 0 && id < setting_count;
    return known ? &settings[id] : nullptr;
}

int dbt_get_int(int defaults, int id, int)
{
    const int *value = setting(defaults, id);
    return value ? *value : 0;
}

void dbt_set_int(int defaults, int id, int value, int)
{
    if (int *stored = setting(defaults, id))
        *stored = value;
}

// Does nothing: the stub loads no libraries of plug-ins.
void register_new_plugin_paths(const char *)
{
}
