// What a fuzzer runs in: an empty directory of its own, an environment of its
// own, and the library as a process finds it.  All three are put back before
// each input.  While an input runs the library can change nothing outside the
// directory, its memory is counted and a host answers it.

#pragma once

#include <string>
#include <string_view>
#include <vector>

// The target: prepare() runs once, and each input begins with what it left.
void prepare();
void run(std::string_view input);

// Ends the process, which the fuzzer takes for a find, unless the fact holds.
void expect(bool fact, const char *fact_text);
#define EXPECT(fact) expect(fact, #fact)
// Shows two texts that are not the same.
void expect_same(std::string_view one, std::string_view other);

// The directory is the current one, HOME and the place of the product's files,
// of which the shared one is "vorn.cfg".
extern std::string home;
void put_file(const std::string &name, std::string_view text);
std::string get_file(const std::string &name); // empty if there is none

void set(const char *name, const char *value);
// A process that begins now: the library as it was loaded, and the environment.
// The files stay.
void begin_process();
void fail_allocation(int nth); // from now on; 0 none

// The host.
struct host {
    std::string plugin_list;
    int answer;        // to an alert
    int errors;        // how many reports of errors there were
    bool keeps_places; // of files: the variables that tell them are not set
};
extern host the_host;

std::vector<std::string> split(std::string_view text, std::string_view separator);
