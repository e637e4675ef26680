// What vekhost changes in the session, and writes besides files of the user's.

#pragma once

#include <string>

// Each result: 0 for well.  An edit reaches the private configuration file as
// the library has it; a move does not, and so the new order is printed.
int add_database(const std::string &name, const std::string &path, int level); // 0: at the end
int remove_database(const std::string &name);
int move_database(const std::string &name, int level);

// Without a name, print the default for writing.
int choose_default(const std::string &name);

// Asks the user first.
int save_session();

// `what` is "databases" or "tables".
int write_report(const std::string &what, const std::string &path);
int make_database(const std::string &path);
