// The commands of vekhost and what they are run with.

#pragma once

#include "session.h"

struct command_options {
    session_options session;
    session_outcome outcome;        // of the session's start
    std::vector<std::string> words; // the command's arguments
    std::string file_class;
    std::string database; // that "copy --to-db" or "move" names
    int level = 0;        // 0: not given
    bool why = false;
    bool all = false;
};

enum session_use {
    SESSION_NONE,     // no session is started
    SESSION_REPORTED, // the command runs even if the start failed
    SESSION_NEEDED,
    SESSION_SEARCHED // needed; the command itself makes the first search
};

namespace CLI {
class App;
}

// A row of the table of commands.
struct command {
    const char *name;
    const char *help;
    const char *word = nullptr; // the name of the arguments; null: no such arguments
    const char *word_help = "";
    int min_words = 1;
    int max_words = 1; // MANY_WORDS: no limit
    int (*run)(const command_options &options) = nullptr;
    session_use session = SESSION_NEEDED;
    void (*add_options)(CLI::App &app, command_options &options) = nullptr;
    // Returns what is wrong with arguments that the parser accepts; null: nothing.
    const char *(*usage_error)(const command_options &options) = nullptr;
};

const int MANY_WORDS = -1;

// Parses the command line.  Returns null if there is no command to run: either the
// help or, with *is_usage_error set to true, an error message was printed.
const command *parse_command_line(int argc, char **argv, command_options &options,
                                  bool *is_usage_error);

// What the commands run.  Each returns 0 for success and prints its results to
// standard output.

// The searches return the number of names that were not found.
int show_files(const command_options &options);
int explain_search(const command_options &options);  // each path tried, and its status
int show_all_copies(const command_options &options); // at all levels of a class

int show_aliases(const command_options &options);
int show_databases(const command_options &options);
int show_defaults(const command_options &options);
int show_environment(const command_options &options);
int show_tables(const command_options &options);
int show_session(const command_options &options);
int check_session(const command_options &options);

int copy_file(const command_options &options);
int rename_file(const command_options &options);
int append_file(const command_options &options);
int back_up_file(const command_options &options);
int delete_file(const command_options &options);

// These change the session.  All but the move also write the private configuration
// file.
int add_database(const command_options &options);
int remove_database(const command_options &options);
int move_database(const command_options &options); // prints the new order
int set_or_show_default(const command_options &options);
int save_session(const command_options &options); // asks the user first

int write_report(const command_options &options);
int create_database(const command_options &options);

// Searches as a product does.  Returns the real path; empty if it is not found.
std::string search(std::string name, const std::string &file_class);
