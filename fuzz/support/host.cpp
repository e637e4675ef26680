// The stub core library of the fuzzers.

#include "hsk.h"
#include "support/harness.h"

#include <cstring>

void vc_str_print(const char *text)
{
    the_host.errors += std::string_view(text).starts_with("ERROR: ");
}
int vc_alert(const char *, const char *message, const char *, const char *, const char *, int)
{
    return *message == '\0' ? 0 : the_host.answer;
}
int vc_putenv(const char *name, const char *value)
{
    expect(strlen(name) <= 60 && strlen(value) < 268, "a variable is within its limits");
    std::string_view view = name;
    bool is_location = view.starts_with("KLV_") || view == "HOME" || view == "TMPDIR";
    if (view.empty() || view.find('=') != view.npos || (is_location && the_host.keeps_locations))
        return 1;
    set_env(name, value);
    return 0;
}
int msg_get_gui_threshold()
{
    return 0;
}
void msg_set_gui_threshold(int)
{
}
int default_current_defaults()
{
    return 0;
}
int dbt_get_int(int, int, int)
{
    return 0;
}
void dbt_set_int(int, int, int, int)
{
}
int ac_tavik_root()
{
    return 70;
}
void ac_lookup_begin(int, int)
{
}
int ac_lookup_object(int)
{
    return 71;
}
void ac_lookup_done()
{
}
int ac_lookup_by_name(int, int, const char *)
{
    return the_host.plugin_list.empty() ? 0 : 72;
}
void ac_get_string(int, int, int, char *buffer)
{
    memcpy(buffer, the_host.plugin_list.c_str(), the_host.plugin_list.size() + 1);
}
void register_new_plugin_paths(const char *name)
{
    expect(strlen(name) < 1024, "a plug-in's name is within its limit");
}
