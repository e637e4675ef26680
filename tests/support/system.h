// What the tests ask of the system itself.

#pragma once

#include <string>
#include <vector>

#ifdef _WIN32
constexpr bool on_windows = true;
#else
constexpr bool on_windows = false;
#endif

// What the system says of a directory where a file is wanted.
constexpr const char *directory_error = on_windows ? "Permission denied" : "Is a directory";

std::string make_scratch_dir();       // whole, with "/"
std::vector<std::string> variables(); // "name=value"
bool set_variable(const std::string &name, const std::string &value);
void unset(const std::string &name);

// Windows has no pipes among its files; then nothing is made.
void make_pipe(const std::string &path);
// Ends a process that waits for one; 0 takes it back.
void end_in(unsigned seconds);
