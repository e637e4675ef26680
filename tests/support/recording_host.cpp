#include "recording_host.h"

#include "system.h"

#include "hsk.h"

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
#define HOST(type, result, name, parameters, ...)                                                  \
    type name parameters                                                                           \
    {                                                                                              \
        return static_cast<type>(record(result, #name __VA_OPT__(, ) __VA_ARGS__));                \
    }
HOST(int, host::settings[0], msg_get_gui_threshold, ())
HOST(void, host::settings[0] = threshold, msg_set_gui_threshold, (int threshold), threshold)
static int last; // a new handle per call, to detect a handle that the library has kept
HOST(int, ++last, default_current_defaults, ())
HOST(int, host::settings[id], dbt_get_int, (int defaults, int id, int zero), defaults, id, zero)
HOST(void, host::settings[id] = value, dbt_set_int, (int defaults, int id, int value, int zero),
     defaults, id, value, zero)
HOST(int, 70, ac_tavik_root, ())
HOST(void, 0, ac_lookup_begin, (int root, int type), root, type)
HOST(int, host::plugin_list ? 71 : 0, ac_lookup_object, (int zero), zero)
HOST(void, 0, ac_lookup_done, ())
HOST(int, model == 71 ? 72 : 0, ac_lookup_by_name, (int model, int type, const char *name), model,
     type, name)
HOST(void, 0, register_new_plugin_paths, (const char *name), name)
void ac_get_string(int object, int attribute, int zero, char *buffer)
{
    strcpy(buffer, host::plugin_list->c_str());
    record(0, "ac_get_string", object, attribute, zero);
}
