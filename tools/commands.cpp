// The table of commands, and that of their options.

#include "commands.h"

const size_t MANY = 1 << 20;

const vector<command> commands = {
    {"Ask", "find", "print paths of names", "NAME... | -", 1, MANY, SEARCHES, find_files},
    {"Ask", "alias", "print names of paths", "PATH... | -", 1, MANY, ASKS, show_aliases},
    {"Ask", "defaults", "print defaults", "[CLASS]... | -", 0, MANY, ASKS, show_defaults},
    {"Ask", "databases", "print search order", "", 0, 0, ASKS, show_databases},
    {"Ask", "tables", "print tables", "", 0, 0, ASKS, show_tables},
    {"Ask", "session", "start, and report", "", 0, 0, ALONE, show_session},
    {"Ask", "env", "print variables", "", 0, 0, ASKS, show_environment},
    {"Ask", "version", "print the build", "", 0, 0, ALONE, show_version},
    {"Check", "lint", "read files only", "FILE...", 1, MANY, ALONE, lint_files,
     "Prints what is wrong in files of a session, in their order.  Nothing on disk changes.\n"},
    {"Check", "check", "read files, start", "", 0, 0, ALONE, check_session,
     "Prints where a session looks for its files and what is wrong in them, and starts it.\n"
     "Fails if there is an error or a warning.  A start creates the private file, directories\n"
     "of databases and tables, and for a moment a file tmp_bedwvorn.txt in each database.\n"},
    {"Files", "copy", "copy a file", "SOURCE [TARGET]", 1, 2, CHANGES, change_files},
    {"Files", "rename", "rename a file", "OLD NEW", 2, 2, CHANGES, change_files},
    {"Files", "append", "append to a file", "SOURCE TARGET", 2, 2, CHANGES, change_files},
    {"Files", "backup", "back up a file", "PATH", 1, 1, CHANGES, change_files},
    {"Files", "delete", "delete a file", "PATH", 1, 1, CHANGES, change_files},
    {"Change", "add", "add a database", "NEW DIRECTORY", 2, 2, CHANGES, add_database},
    {"Change", "remove", "remove a database", "DATABASE", 1, 1, CHANGES, remove_database},
    {"Change", "move", "move a database", "DATABASE LEVEL", 2, 2, CHANGES, move_database},
    {"Change", "default", "set or print default", "[DATABASE]", 0, 1, CHANGES, set_or_show_default},
    {"Change", "save", "rewrite private file", "", 0, 0, CHANGES, save_session},
    {"Write", "report", "write a report", "databases|tables FILE", 2, 2, ASKS, write_report},
    {"Write", "new-database", "create a database", "PATH", 1, 1, CHANGES, create_database},
    {"", "help", "explain a command", "[COMMAND]", 0, 1, ALONE, show_help},
    {"", "complete", "print what can follow", "[WORD]...", 0, MANY, ALONE, complete_words},
};

vector<option> options_of(command_options &given)
{
    const char *queries =
        "find alias defaults databases tables session env version check lint move default";
    return {
        {"--class", "find", "File class of the names", nullptr, &given.file_class, "CLASS"},
        {"--why", "find session", "Print each path that is tried", &given.why},
        {"--all", "find", "Print each level that holds the file", &given.all},
        {"--origin", "databases tables defaults", "Print the file and line of each", &given.origin},
        {"--as", "lint", "private: last file; else first", nullptr, &given.role,
         "private|site|plugin"},
        {"--format", "lint", "Form of what is printed", nullptr, &given.format, "gcc|json"},
        {"--strict", "lint", "Make warnings errors", &given.strict},
        {"--to-db", "copy", "Target, by the extension", nullptr, &given.database, "DATABASE"},
        {"--level", "add", "Its level (default: the last)", nullptr, &given.level, "N"},
        {"--save", "move", "Write the private file, after a backup", &given.saves},
        {"--overwrite", "save", "Do not ask, and overwrite", &given.overwrites},
        {"--backup", "save", "Do not ask, and make a backup", &given.backs_up},
        {"--json", queries, "Print JSON Lines", &output.json},
        {"-0", "find alias defaults", "NUL ends names", &output.nul},
        {"--product", "", "Short name of the product", nullptr, &given.session.product, "NAME"},
        {"--model", "", "Model of the solver run", nullptr, &given.session.model, "FILE"},
        {"--solver", "", "Make a solver run", &given.session.solver},
        {"-v,--verbose", "", "Print all lines", &output.all_lines},
        {"--version", "", "Print the version", &given.version},
        {"-h,--help", "", "Print how to use it", &given.help},
    };
}

const command *find_command(const string &name)
{
    const auto found = std::ranges::find(commands, name, &command::name);
    return found == commands.end() ? nullptr : &*found;
}
