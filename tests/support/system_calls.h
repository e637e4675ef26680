// Recording the library's system calls, and making them fail, within the process.

#pragma once

#include <functional>
#include <string>

namespace calls {

// Called before each call, with it as "call path" or "rename path path", if it is set: returns
// the errno value that the call fails with, or 0.
extern std::function<int(const std::string &call)> error_for;

} // namespace calls
