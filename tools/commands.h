// The commands of vekhost and what they are run with.

#pragma once

#include "configuration/configuration.h"
#include "output.h"

#include <functional>

struct session_options {
    string product; // empty: the value of KLV_PRODUCT_NAME
    strings plugins;
    bool solver = false;
    string model; // empty: a solver run without a model
};

struct command_options {
    session_options session;
    string command;
    strings words; // its arguments
    string file_class, database, level, role, format;
    bool help = false, version = false, why = false, all = false, origin = false, strict = false;
    bool overwrites = false, backs_up = false, saves = false;
};

// A command that asks or searches prints errors and warnings of the library alone, and one that
// searches makes the first search itself.  One that is alone starts a session itself or needs none.
enum command_kind { ASKS, SEARCHES, CHANGES, ALONE };

using run_command = int(const command_options &options); // returns 0 for success

struct command {
    const char *group; // in the help; empty: it is not listed
    const char *name, *brief, *arguments;
    size_t least, most; // how many arguments
    command_kind kind;
    run_command *run;
    const char *more = ""; // for its own help
};
extern const vector<command> commands;           // in the order of the help
const command *find_command(const string &name); // or null

// An option of some commands, or of all if `commands` is empty.  It sets `text` or `flag`.
struct option {
    string name, commands, help;
    bool *flag;
    string *text = nullptr;
    string values = ""; // of `text`: what to call it, or those that are allowed
};
vector<option> options_of(command_options &given);

// Starts the product and then each plug-in, up to the first failure, or prepares a solver run.
// In a solver run the library starts itself at its first search.  That is the command's if
// `command_searches`, otherwise one of an empty name.  Returns 0, or an error after a message.
int start_session(const session_options &options, bool command_searches);

configuration next_session(const session_options &options); // what the files have for it
strings database_names();                                   // in search order
vector<entry> session_tables();

// That there is no such database, or table with such a name, directory or extension; else empty.
string unknown_database(const string &name);
string unknown_in_tables(string entry::*key, const string &what, const string &name);

// Returns null after a usage error, which is printed.
const command *parse_command_line(int argc, char **argv, command_options &options);

// Calls `answer` with each word of a command or, if the only one is "-", with each line of
// standard input.  Returns how often it returned false.
int answer_names(const command_options &options, const std::function<bool(const string &)> &answer);

// Absolute and without "." and "..".  Symbolic links are kept.
string clean_path(const string &path);

// What the commands run.  The searches return the number of names that were not found.
run_command find_files, show_aliases, show_databases, show_defaults, show_environment, show_tables,
    show_session, show_version, show_help, check_session, lint_files, change_files, add_database,
    remove_database, move_database, set_or_show_default, save_session, write_report,
    create_database, complete_words;
