// The answers of vekhost, on standard output.

#pragma once

#include <string>
#include <vector>

// One line for each name.  Result: how many of them were not found.
int show_files(const std::vector<std::string> &names, const std::string &file_class, bool solver);

void show_databases();

// Result: 0 shown; 1 the report could not be made.
int show_tables();

// With the result of the start.
void show_session(int code);
