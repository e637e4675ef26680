// The answers of vekhost, on standard output.  Results: 0 for well.

#pragma once

#include <string>
#include <vector>

// The real path of a name; empty if it is not found.
std::string search(std::string name, const std::string &file_class);

// One line for each name.  Result: how many of them were not found.
int show_files(const std::vector<std::string> &names, const std::string &file_class, bool solver);

// One line for each path.
int show_aliases(const std::vector<std::string> &paths);

int show_databases();

// One line for each class.
int show_defaults(const std::vector<std::string> &classes);

// The library's own report, on standard output.
int show_environment();

// Result: 0 shown; 1 the report could not be made.
int show_tables();

// With the result of the start.
void show_session(int code);
