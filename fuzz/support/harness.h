// The harness of the fuzzers.  Each input runs with an empty directory, an
// environment and the initial state of the library, all restored beforehand.  The
// library can change nothing outside the directory, its allocations are recorded
// and freed, and a stub core library serves it.

#pragma once

#include <string>
#include <string_view>
#include <vector>

// Defined by each fuzzer.  prepare() runs once; each input begins with the state that
// it left.
void prepare();
void run(std::string_view input);

// Aborts unless the condition holds; libFuzzer reports that as a crash.
void expect(bool condition, const char *description);
#define EXPECT(condition) expect(condition, #condition)
// Prints both strings before it aborts.
void expect_same(std::string_view expected, std::string_view actual);

// The directory: the current one, HOME and KLV_VORN, so that the product's shared
// file is "vorn.cfg" in it.
extern std::string home;
void write_file(const std::string &name, std::string_view contents);
std::string read_file(const std::string &name); // empty if there is no file

void set_env(const char *name, const char *value);
// Simulates a new process: restores the environment and the state that the library
// had when it was loaded.  The files are kept.
void begin_process();
void fail_allocation(int nth); // counted from this call; 0: none fails

// What the stub core library does and has seen.
struct host {
    std::string plugin_list;
    int answer;           // to a dialog
    int errors;           // the number of errors reported
    bool keeps_locations; // rejects changes of the variables that locate files
};
extern host the_host;

std::vector<std::string> split(std::string_view string, std::string_view separator);
