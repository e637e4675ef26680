// Recording the library's system calls, and making them fail, within the process.

#pragma once

#include "recording_host.h"

#include <functional>

namespace calls {

// Each call as "call path", or "rename path path".  Calls of the tests themselves are
// recorded, too.
extern Lines made;
// Called before each call: returns the errno value that it fails with, or 0.  Nothing is
// recorded while this is empty.
extern std::function<int(const std::string &call)> error_for;

} // namespace calls
