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
    EXIT_GOOD = 0,
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
static CLI::App *add_command(CLI::App &app, request &asked, const char *name, const char *what,
                             const char *word, int count)
{
    CLI::App *command = app.add_subcommand(name, what);
    CLI::Option *words = command->add_option(word, asked.names)->required();
    if (count > 0)
        words->expected(count);
    return command;
}

static void describe_find(CLI::App &app, request &asked)
{
    CLI::App *find =
        add_command(app, asked, "find", "Print the real path of each name, in any form", "NAME", 0);
    CLI::Option *file_class =
        find->add_option("--class", asked.file_class, "File class of the names")
            ->option_text("CLASS");
    CLI::Option *why =
        find->add_flag("--why", asked.why, "Also print every path that is tried, in order")
            ->option_text(" ");
    find->add_flag(
            "--all", asked.all,
            "Print every level that holds the file of the class; needs --class, not with --why")
        ->option_text(" ")
        ->needs(file_class)
        ->excludes(why);
}

static void describe_edits(CLI::App &app, request &asked)
{
    CLI::App *add =
        add_command(app, asked, "add", "Add a database: a name and a directory", "NAME PATH", 2);
    add->add_option("--level", asked.level, "Its level (default: the last)")->option_text("N");
    add_command(app, asked, "remove", "Remove a database from the list", "NAME", 1);
    CLI::App *move =
        app.add_subcommand("move", "Move a database to a level for this run, and print the order");
    move->add_option("NAME", asked.database)->required();
    move->add_option("LEVEL", asked.level)->required();
    app.add_subcommand("default", "Set or print the default database for writing")
        ->add_option("NAME", asked.names)
        ->expected(0, 1);
    app.add_subcommand("save", "Ask, and save the session to the private configuration file");
    add_command(app, asked, "report", "Write a report, of databases or tables, to a file",
                "WHAT FILE", 2);
    add_command(app, asked, "new-database", "Make the directories of a new database", "PATH", 1);
}

static void describe_commands(CLI::App &app, request &asked)
{
    describe_find(app, asked);
    add_command(app, asked, "alias", "Print the alias of each real path", "PATH", 0);
    CLI::App *copy = app.add_subcommand("copy", "Copy a file, or with --to-db into a database");
    copy->add_option("--to-db", asked.database, "The database; its table goes by the extension")
        ->option_text("DATABASE");
    copy->add_option("PATH", asked.names, "Source, and target without --to-db")
        ->required()
        ->expected(1, 2);
    add_command(app, asked, "rename", "Rename a file", "PATH", 2);
    add_command(app, asked, "append", "Append the first file to the second", "PATH", 2);
    add_command(app, asked, "backup", "Copy a file to its backup", "PATH", 1);
    add_command(app, asked, "delete", "Delete a file", "PATH", 1);
    add_command(app, asked, "defaults", "Print the property file and test rig of each class",
                "CLASS", 0);
    app.add_subcommand("env", "Print what the variables that are set will do");
    app.add_subcommand("databases", "Print the databases in search order");
    app.add_subcommand("tables", "Print the tables");
    app.add_subcommand("session", "Only start, and say how it went");
    app.add_subcommand("check", "Only start, and count errors and warnings; fails if there is one");
    describe_edits(app, asked);
    app.add_subcommand("version", "Print what identifies the build of the library");
    app.require_subcommand(1);
    app.footer(
        "Exit status: 0 all is well; 1 a file is missing, or what was asked for went wrong;\n"
        "2 wrong usage; 3 there is no session to ask.");
}

// The solver's start is a part of its first search.
static session_outcome start(const request &asked)
{
    if (!asked.session.solver)
        return start_product(asked.session);
    session_outcome outcome = prepare_solver(asked.session);
    if (outcome.code != 0 || asked.command == "find")
        return outcome;
    char nothing[1] = "";
    int found = 0;
    db_search(nothing, "", &found);
    if (vorn_vek_get_number_of_veks() < 1)
        return {1, "there is no database"};
    return outcome;
}

static int find(const request &asked)
{
    if (asked.why)
        return explain_search(asked.names, asked.file_class);
    if (asked.all)
        return show_all_copies(asked.names, asked.file_class);
    return show_files(asked.names, asked.file_class, asked.session.solver);
}

static int edit(const request &asked)
{
    const std::vector<std::string> &words = asked.names;
    if (asked.command == "add")
        return add_database(words[0], words[1], asked.level);
    if (asked.command == "remove")
        return remove_database(words[0]);
    if (asked.command == "move")
        return move_database(asked.database, asked.level);
    if (asked.command == "default")
        return choose_default(words.empty() ? "" : words[0]);
    if (asked.command == "report")
        return write_report(words[0], words[1]);
    if (asked.command == "new-database")
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
static int carry_out(const request &asked)
{
    if (asked.command == "find")
        return find(asked);
    if (asked.command == "alias")
        return show_aliases(asked.names);
    if (asked.command == "defaults")
        return show_defaults(asked.names);
    if (asked.command == "env")
        return show_environment();
    if (asked.command == "tables")
        return show_tables();
    if (asked.command == "databases")
        return show_databases();
    return is_edit(asked.command) ? edit(asked)
                                  : act_on_files(asked.command, asked.names, asked.database);
}

static int answer(const request &asked, const session_outcome &outcome)
{
    if (outcome.code != 0)
        std::fprintf(stderr, "vekhost: %s\n", outcome.trouble.c_str());
    if (asked.command == "check")
        return check_session(asked.session, outcome) == 0 ? EXIT_GOOD : EXIT_MISSING;
    if (asked.command == "session") {
        show_session(outcome.code);
        return outcome.code == 0 ? EXIT_GOOD : EXIT_MISSING;
    }
    if (outcome.code != 0)
        return EXIT_NO_SESSION;
    return carry_out(asked) == 0 ? EXIT_GOOD : EXIT_MISSING;
}

// What is wrong with the words, beyond what the parser sees; null: nothing.
static const char *misuse(const request &asked)
{
    bool is_product_only = asked.command == "check" || asked.why || asked.all;
    if (asked.command == "copy" && asked.names.size() != (asked.database.empty() ? 2 : 1))
        return "copy takes a source and a target, or a source and --to-db";
    if (asked.command == "report" && asked.names[0] != "databases" && asked.names[0] != "tables")
        return "report takes \"databases\" or \"tables\", and a file";
    if (is_product_only && asked.session.solver)
        return "check, find --why and find --all are for product sessions, not for --solver";
    return nullptr;
}

int main(int count, char **words)
{
    CLI::App app("Asks the file-location library where files live.", "vekhost");
    request asked;
    app.allow_windows_style_options(false); // "/" begins a path on every system
    describe_session(app, asked.session);
    describe_commands(app, asked);
    try {
        app.parse(count, words);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? EXIT_GOOD : EXIT_USAGE;
    }

    asked.command = app.get_subcommands().front()->get_name();
    if (const char *wrong = misuse(asked)) {
        std::fprintf(stderr, "vekhost: %s\n", wrong);
        return EXIT_USAGE;
    }
    if (asked.command == "version") {
        vek_version();
        return EXIT_GOOD;
    }

    // The answers keep standard output to themselves, and their place among
    // the library's lines when both go to one terminal or file.
    hsk_output_to_error(1);
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    return answer(asked, start(asked));
}
