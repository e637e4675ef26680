// Scripts: reading them, and running their lines.

#pragma once

#include "notation.h"

#include <map>

struct Case {
    std::string title;
    size_t line; // of the title in its file
    Lines lines; // without comments and empty lines
};

struct Script {
    std::vector<Case> cases;
    std::map<std::string, Lines> blocks; // by name
};

// Adds the cases and blocks of a file.
void read_script(const std::string &path, Script &script);
// Returns the parts of a case, which run in one process each.
std::vector<Lines> parts_of(const Lines &lines);
// Returns lines as encode writes them, with the blocks that they use.
Lines expected_lines(const Script &script, const Lines &lines);
// Runs such lines, and returns them with the results that their commands have.
Lines run_lines(const Script &script, const Lines &lines);
