// What differs between systems in the tests.

#pragma once

#include <string>
#include <vector>

#ifdef _WIN32
constexpr bool on_windows = true;
#else
constexpr bool on_windows = false;
#endif

// The error message for a directory where a file is expected.
constexpr const char *directory_error = on_windows ? "Permission denied" : "Is a directory";

std::string make_temp_dir();          // absolute, with "/"
std::vector<std::string> variables(); // "name=value"
bool set_variable(const std::string &name, const std::string &value);
void unset(const std::string &name);

// Create a named pipe.  Does nothing on Windows.
void make_pipe(const std::string &path);
// Kill the process after that many seconds, so that it cannot wait for a pipe forever.  0
// cancels the alarm.  Does nothing on Windows.
void set_alarm(unsigned seconds);
// Run a program without a shell and return its exit status, or a negative number if it died.
int run_program(const std::vector<std::string> &words);
bool is_root();
