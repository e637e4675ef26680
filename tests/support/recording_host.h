// The core library of the tests.  It records every call with its arguments, and returns
// what the test has set.

#pragma once

#include "files.h"
#include <map>
#include <optional>
#include <string>

namespace host {

// The recorded calls as "name(argument, ...)", oldest first.
extern Lines calls;

extern std::optional<std::string> plugin_list; // of the model; unset: it has none
extern std::map<int, int> settings;            // by id; 0 is the message threshold
extern int answer;                             // the button that answers a dialog
extern void (*when_print)(const char *text);   // called before a line is recorded
// vc_putenv fails for the value "fail".

} // namespace host
