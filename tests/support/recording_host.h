// The core library as the tests play it: it keeps every call with its arguments
// and answers as a test has scripted it.

#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

namespace host {

// Calls are kept as "name(argument, ...)", oldest first.
extern Lines calls;
Lines calls_of(const std::string &operation);
// The lines that vc_str_print got.  All calls are forgotten.
Lines printed();

extern std::optional<std::string> plugin_list; // the model's, if there is one
extern std::map<int, int> settings;            // by their id; 0 is the threshold
extern int answer;                             // to an alert
extern void (*when_print)(const char *text);   // called before a line is kept
// Setting a variable to "fail" fails.

} // namespace host
