// What the library asks of the system, seen and refused within the process.

#pragma once

#include "recording_host.h"

#include <functional>

namespace calls {

// Each as "call path", or "rename path path".  Those that the tests make
// themselves are among them.
extern Lines made;
// Asked before each call: the errno value with which it is refused, or 0.
extern std::function<int(const std::string &call)> refuse;

} // namespace calls
