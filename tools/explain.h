// Why a name leads to a file or to none, from the library's interface alone.

#pragma once

#include <string>
#include <vector>

// Every path that the search tries for each name, in order, with the database
// and table that it comes from and the system's answer, and what the search
// itself gives.  Result: how many names were not found.
int explain_search(const std::vector<std::string> &names, const std::string &file_class);

// Every level that holds the file of each name in the table of the class: the
// one that wins, and those that it hides.  Result: how many names no search finds.
int show_all_copies(const std::vector<std::string> &names, const std::string &file_class);
