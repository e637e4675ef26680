// vekhost: a small host that loads the library as the products and the solver
// do, asks it one thing and prints the answer.

#include "act.h"
#include "check.h"
#include "edit.h"
#include "explain.h"
#include "hsk_control.h"
#include "session.h"
#include "show.h"
#include "vek.h"

#include <CLI/CLI.hpp>

#include <cstdio>

enum exit_status {
    EXIT_OK = 0,
    EXIT_MISSING = 1, // a file is missing, or what was asked for went wrong
    EXIT_USAGE = 2,
    EXIT_NO_SESSION = 3
};

struct request {
    session_options session;
    std::string file_class;
    std::string database; // that a file is copied into, or that is moved
    std::vector<std::string> names;
    int level = 0; // 0: none is asked for
    bool why = false;
    bool all = false;
    std::string command;
};

static void describe_session(CLI::App &app, session_options &session)
{
    app.add_option("--product", session.product,
                   "Short name of the product (default: KLV_PRODUCT_NAME, else vorn)")
        ->option_text("NAME");
    CLI::Option *plugins =
        app.add_option("--plugin", session.plugins,
                       "A plug-in to start after the product; may be given again")
            ->option_text("NAME")
            ->allow_extra_args(false);
    CLI::Option *solver =
        app.add_flag("--solver", session.solver,
                     "Make a solver run: the model names the product and its plug-ins")
            ->option_text(" ")
            ->excludes(plugins);
    app.add_option("--model", session.model, "The model of the solver run")
        ->option_text("FILE")
        ->needs(solver);
}

// A command that takes `count` words of one kind, or one or more for 0.
static CLI::App *add_command(CLI::App &app, request &options, const char *name, const char *what,
                             const char *word, int count)
{
    CLI::App *command = app.add_subcommand(name, what);
    CLI::Option *words = command->add_option(word, options.names)->required();
    if (count > 0)
        words->expected(count);
    return command;
}

static void describe_find(CLI::App &app, request &options)
{
    CLI::App *find = add_command(app, options, "find",
                                 "Print the real path of each name, in any form", "NAME", 0);
    CLI::Option *file_class =
        find->add_option("--class", options.file_class, "File class of the names")
            ->option_text("CLASS");
    CLI::Option *why =
        find->add_flag("--why", options.why, "Also print every path that is tried, in order")
            ->option_text(" ");
    find->add_flag(
            "--all", options.all,
            "Print every level that holds the file of the class; needs --class, not with --why")
        ->option_text(" ")
        ->needs(file_class)
        ->excludes(why);
}

static void describe_edits(CLI::App &app, request &options)
{
    CLI::App *add =
        add_command(app, options, "add", "Add a database: a name and a directory", "NAME PATH", 2);
    add->add_option("--level", options.level, "Its level (default: the last)")->option_text("N");
    add_command(app, options, "remove", "Remove a database from the list", "NAME", 1);
    CLI::App *move =
        app.add_subcommand("move", "Move a database to a level for this run, and print the order");
    move->add_option("NAME", options.database)->required();
    move->add_option("LEVEL", options.level)->required();
    app.add_subcommand("default", "Set or print the default database for writing")
        ->add_option("NAME", options.names)
        ->expected(0, 1);
    app.add_subcommand("save", "Ask, and save the session to the private configuration file");
    add_command(app, options, "report", "Write a report, of databases or tables, to a file",
                "WHAT FILE", 2);
    add_command(app, options, "new-database", "Make the directories of a new database", "PATH", 1);
}

static void describe_commands(CLI::App &app, request &options)
{
    describe_find(app, options);
    add_command(app, options, "alias", "Print the alias of each real path", "PATH", 0);
    CLI::App *copy = app.add_subcommand("copy", "Copy a file, or with --to-db into a database");
    copy->add_option("--to-db", options.database, "The database; its table goes by the extension")
        ->option_text("DATABASE");
    copy->add_option("PATH", options.names, "Source, and target without --to-db")
        ->required()
        ->expected(1, 2);
    add_command(app, options, "rename", "Rename a file", "PATH", 2);
    add_command(app, options, "append", "Append the first file to the second", "PATH", 2);
    add_command(app, options, "backup", "Copy a file to its backup", "PATH", 1);
    add_command(app, options, "delete", "Delete a file", "PATH", 1);
    add_command(app, options, "defaults", "Print the property file and test rig of each class",
                "CLASS", 0);
    app.add_subcommand("env", "Print what the variables that are set will do");
    app.add_subcommand("databases", "Print the databases in search order");
    app.add_subcommand("tables", "Print the tables");
    app.add_subcommand("session", "Only start, and say how it went");
    app.add_subcommand("check", "Only start, and count errors and warnings; fails if there is one");
    describe_edits(app, options);
    app.add_subcommand("version", "Print what identifies the build of the library");
    app.require_subcommand(1);
    app.footer(
        "Exit status: 0 all is well; 1 a file is missing, or what was asked for went wrong;\n"
        "2 wrong usage; 3 there is no session to ask.");
}

// The solver's start is a part of its first search.
static session_outcome start(const request &options)
{
    if (!options.session.solver)
        return start_product(options.session);
    session_outcome outcome = prepare_solver(options.session);
    if (outcome.code != 0 || options.command == "find")
        return outcome;
    char nothing[1] = "";
    int found = 0;
    db_search(nothing, "", &found);
    if (vorn_vek_get_number_of_veks() < 1)
        return {1, "there is no database"};
    return outcome;
}

static int find(const request &options)
{
    if (options.why)
        return explain_search(options.names, options.file_class);
    if (options.all)
        return show_all_copies(options.names, options.file_class);
    return show_files(options.names, options.file_class, options.session.solver);
}

static int edit(const request &options)
{
    const std::vector<std::string> &words = options.names;
    if (options.command == "add")
        return add_database(words[0], words[1], options.level);
    if (options.command == "remove")
        return remove_database(words[0]);
    if (options.command == "move")
        return move_database(options.database, options.level);
    if (options.command == "default")
        return choose_default(words.empty() ? "" : words[0]);
    if (options.command == "report")
        return write_report(words[0], words[1]);
    if (options.command == "new-database")
        return make_database(words[0]);
    return save_session();
}

static bool is_edit(const std::string &command)
{
    for (const char *known : {"add", "remove", "move", "default", "save", "report", "new-database"})
        if (command == known)
            return true;
    return false;
}

// Result: 0 for well, as everywhere here.
static int carry_out(const request &options)
{
    if (options.command == "find")
        return find(options);
    if (options.command == "alias")
        return show_aliases(options.names);
    if (options.command == "defaults")
        return show_defaults(options.names);
    if (options.command == "env")
        return show_environment();
    if (options.command == "tables")
        return show_tables();
    if (options.command == "databases")
        return show_databases();
    return is_edit(options.command)
               ? edit(options)
               : act_on_files(options.command, options.names, options.database);
}

static int run(const request &options, const session_outcome &outcome)
{
    if (outcome.code != 0)
        std::fprintf(stderr, "vekhost: %s\n", outcome.error.c_str());
    if (options.command == "check")
        return check_session(options.session, outcome) == 0 ? EXIT_OK : EXIT_MISSING;
    if (options.command == "session") {
        show_session(outcome.code);
        return outcome.code == 0 ? EXIT_OK : EXIT_MISSING;
    }
    if (outcome.code != 0)
        return EXIT_NO_SESSION;
    return carry_out(options) == 0 ? EXIT_OK : EXIT_MISSING;
}

// What is wrong with the words, beyond what the parser sees; null: nothing.
static const char *usage_error(const request &options)
{
    bool is_product_only = options.command == "check" || options.why || options.all;
    if (options.command == "copy" && options.names.size() != (options.database.empty() ? 2 : 1))
        return "copy takes a source and a target, or a source and --to-db";
    if (options.command == "report" && options.names[0] != "databases" &&
        options.names[0] != "tables")
        return "report takes \"databases\" or \"tables\", and a file";
    if (is_product_only && options.session.solver)
        return "check, find --why and find --all are for product sessions, not for --solver";
    return nullptr;
}

int main(int count, char **words)
{
    CLI::App app("Asks the file-location library where files live.", "vekhost");
    request options;
    app.allow_windows_style_options(false); // "/" begins a path on every system
    describe_session(app, options.session);
    describe_commands(app, options);
    try {
        app.parse(count, words);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? EXIT_OK : EXIT_USAGE;
    }

    options.command = app.get_subcommands().front()->get_name();
    if (const char *wrong = usage_error(options)) {
        std::fprintf(stderr, "vekhost: %s\n", wrong);
        return EXIT_USAGE;
    }
    if (options.command == "version") {
        vek_version();
        return EXIT_OK;
    }

    // The answers keep standard output to themselves, and their place among
    // the library's lines when both go to one terminal or file.
    hsk_output_to_error(1);
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    return run(options, start(options));
}
