#include "recording_host.h"

#include "system.h"

#include "host/hsk.h"

#include <cstdlib>
#include <cstring>
#include <sstream>
#include <utility>

namespace host {

Lines calls;
std::optional<std::string> plugin_list;
std::map<int, int> settings;
int answer = 2;
void (*when_print)(const char *text);

Lines calls_of(const std::string &operation)
{
    Lines found;
    for (const std::string &call : calls)
        if (call.starts_with(operation + "("))
            found.push_back(call);
    return found;
}

Lines printed()
{
    Lines lines = calls_of("vc_str_print");
    for (std::string &line : lines)
        line = line.substr(13, line.size() - 14);
    calls.clear();
    return lines;
}

} // namespace host

template <typename... Arguments>
static int record(int result, const char *operation, Arguments... arguments)
{
    std::ostringstream call;
    [[maybe_unused]] const char *separator = "(";
    ((call << std::exchange(separator, ", ") << arguments), ...);
    host::calls.push_back(operation + (sizeof...(arguments) == 0 ? "(" : call.str()) + ")");
    return result;
}

void vc_str_print(const char *text)
{
    if (host::when_print != nullptr)
        host::when_print(text);
    record(0, "vc_str_print", text);
}
int vc_alert(const char *kind, const char *message, const char *first, const char *second,
             const char *third, int default_button)
{
    return record(host::answer, "vc_alert", kind, message, first, second, third, default_button);
}
int vc_putenv(const char *name, const char *value)
{
    int result = strcmp(value, "fail") != 0 && set_variable(name, value) ? 0 : 1;
    return record(result, "vc_putenv", name, value);
}
int msg_get_gui_threshold()
{
    return record(host::settings[0], "msg_get_gui_threshold");
}
void msg_set_gui_threshold(int threshold)
{
    host::settings[0] = record(threshold, "msg_set_gui_threshold", threshold);
}
int default_current_defaults()
{
    static int last; // a new handle per call, to detect a handle that the library has kept
    return record(++last, "default_current_defaults");
}
int dbt_get_int(int defaults, int id, int zero)
{
    return record(host::settings[id], "dbt_get_int", defaults, id, zero);
}
void dbt_set_int(int defaults, int id, int value, int zero)
{
    host::settings[id] = record(value, "dbt_set_int", defaults, id, value, zero);
}
int ac_tavik_root()
{
    return record(70, "ac_tavik_root");
}
void ac_lookup_begin(int root, int type)
{
    record(0, "ac_lookup_begin", root, type);
}
int ac_lookup_object(int zero)
{
    return record(host::plugin_list ? 71 : 0, "ac_lookup_object", zero);
}
void ac_lookup_done()
{
    record(0, "ac_lookup_done");
}
int ac_lookup_by_name(int model, int type, const char *name)
{
    return record(model == 71 ? 72 : 0, "ac_lookup_by_name", model, type, name);
}
void ac_get_string(int object, int attribute, int zero, char *buffer)
{
    strcpy(buffer, host::plugin_list->c_str());
    record(0, "ac_get_string", object, attribute, zero);
}
void register_new_plugin_paths(const char *name)
{
    record(0, "register_new_plugin_paths", name);
}
