// What vekhost does to files.

#pragma once

#include <string>
#include <vector>

// Carry out copy, rename, append, backup or delete.  A copy with a database
// goes into it.  Result: the library's, 0 for done.
int act_on_files(const std::string &command, std::vector<std::string> paths,
                 const std::string &database);
