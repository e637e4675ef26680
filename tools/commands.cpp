#include "commands.h"

#include "vek.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <iterator>

static void add_find_options(CLI::App &find, command_options &options)
{
    CLI::Option *file_class =
        find.add_option("--class", options.file_class, "File class of the names")
            ->option_text("CLASS");
    CLI::Option *why =
        find.add_flag("--why", options.why, "Also print every path that is tried, in order")
            ->option_text(" ");
    find.add_flag(
            "--all", options.all,
            "Print every level that holds the file of the class; needs --class, not with --why")
        ->option_text(" ")
        ->needs(file_class)
        ->excludes(why);
}

static void add_copy_options(CLI::App &copy, command_options &options)
{
    copy.add_option("--to-db", options.database, "The database; the extension selects its table")
        ->option_text("DATABASE");
}

static void add_add_options(CLI::App &add, command_options &options)
{
    add.add_option("--level", options.level, "Its level (default: the last)")->option_text("N");
}

// NAME is no list of words here, which would take LEVEL as a second word.
static void add_move_arguments(CLI::App &move, command_options &options)
{
    move.add_option("NAME", options.database)->required();
    move.add_option("LEVEL", options.level)->required();
}

static const char *product_session_error(const command_options &options)
{
    return options.session.solver
               ? "check, find --why and find --all are for product sessions, not for --solver"
               : nullptr;
}

static const char *find_error(const command_options &options)
{
    return options.why || options.all ? product_session_error(options) : nullptr;
}

static const char *copy_error(const command_options &options)
{
    return options.words.size() == (options.database.empty() ? 2 : 1)
               ? nullptr
               : "copy takes a source and a target, or a source and --to-db";
}

static const char *report_error(const command_options &options)
{
    return options.words[0] == "databases" || options.words[0] == "tables"
               ? nullptr
               : "report takes \"databases\" or \"tables\", and a file";
}

static int find(const command_options &options)
{
    if (options.why)
        return explain_search(options);
    return options.all ? show_all_copies(options) : show_files(options);
}

static int show_version(const command_options &)
{
    vek_version();
    return 0;
}

// In the order of the help.
static const command commands[] = {
    {.name = "find",
     .help = "Print the real path of each name, in any form",
     .word = "NAME",
     .max_words = MANY_WORDS,
     .run = find,
     .session = SESSION_SEARCHED,
     .add_options = add_find_options,
     .usage_error = find_error},
    {.name = "alias",
     .help = "Print the alias of each real path",
     .word = "PATH",
     .max_words = MANY_WORDS,
     .run = show_aliases},
    {.name = "copy",
     .help = "Copy a file, or with --to-db into a database",
     .word = "PATH",
     .word_help = "Source, and target without --to-db",
     .max_words = 2,
     .run = copy_file,
     .add_options = add_copy_options,
     .usage_error = copy_error},
    {.name = "rename",
     .help = "Rename a file",
     .word = "PATH",
     .min_words = 2,
     .max_words = 2,
     .run = rename_file},
    {.name = "append",
     .help = "Append the first file to the second",
     .word = "PATH",
     .min_words = 2,
     .max_words = 2,
     .run = append_file},
    {.name = "backup", .help = "Copy a file to its backup", .word = "PATH", .run = back_up_file},
    {.name = "delete", .help = "Delete a file", .word = "PATH", .run = delete_file},
    {.name = "defaults",
     .help = "Print the property file and test rig of each class",
     .word = "CLASS",
     .max_words = MANY_WORDS,
     .run = show_defaults},
    {.name = "env",
     .help = "Print what the variables that are set will do",
     .run = show_environment},
    {.name = "databases", .help = "Print the databases in search order", .run = show_databases},
    {.name = "tables", .help = "Print the tables", .run = show_tables},
    {.name = "session",
     .help = "Only start, and report how it went",
     .run = show_session,
     .session = SESSION_REPORTED},
    {.name = "check",
     .help = "Only start, and count errors and warnings; fails if there is one",
     .run = check_session,
     .session = SESSION_REPORTED,
     .usage_error = product_session_error},
    {.name = "add",
     .help = "Add a database: a name and a directory",
     .word = "NAME PATH",
     .min_words = 2,
     .max_words = 2,
     .run = add_database,
     .add_options = add_add_options},
    {.name = "remove",
     .help = "Remove a database from the list",
     .word = "NAME",
     .run = remove_database},
    {.name = "move",
     .help = "Move a database to a level for this run, and print the order",
     .run = move_database,
     .add_options = add_move_arguments},
    {.name = "default",
     .help = "Set or print the default writable database",
     .word = "NAME",
     .min_words = 0,
     .run = set_or_show_default},
    {.name = "save",
     .help = "Ask, and save the session to the private configuration file",
     .run = save_session},
    {.name = "report",
     .help = "Write a report, of databases or tables, to a file",
     .word = "WHAT FILE",
     .min_words = 2,
     .max_words = 2,
     .run = write_report,
     .usage_error = report_error},
    {.name = "new-database",
     .help = "Create the directories of a new database",
     .word = "PATH",
     .run = create_database},
    {.name = "version",
     .help = "Print what identifies the build of the library",
     .run = show_version,
     .session = SESSION_NONE},
};

static void add_session_options(CLI::App &app, session_options &session)
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

static void add_words(CLI::App &app, const command &command, command_options &options)
{
    CLI::Option *words = app.add_option(command.word, options.words, command.word_help);
    if (command.min_words > 0)
        words->required();
    if (command.max_words != MANY_WORDS)
        words->expected(command.min_words, command.max_words);
}

static void add_commands(CLI::App &app, command_options &options)
{
    for (const command &command : commands) {
        CLI::App *subcommand = app.add_subcommand(command.name, command.help);
        if (command.word)
            add_words(*subcommand, command, options);
        if (command.add_options)
            command.add_options(*subcommand, options);
    }
    app.require_subcommand(1);
    app.footer("Exit status: 0 success; 1 a file is missing, or the command failed;\n"
               "2 usage error; 3 the session did not start.");
}

static const command *find_command(const std::string &name)
{
    for (const command &command : commands)
        if (name == command.name)
            return &command;
    return nullptr;
}

const command *parse_command_line(int argc, char **argv, command_options &options,
                                  bool *is_usage_error)
{
    CLI::App app("Asks the file-location library where files live.", "vekhost");
    app.allow_windows_style_options(false); // "/" begins a path on every system
    add_session_options(app, options.session);
    add_commands(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        *is_usage_error = app.exit(error) != 0;
        return nullptr;
    }

    const command *command = find_command(app.get_subcommands().front()->get_name());
    const char *error = command->usage_error ? command->usage_error(options) : nullptr;
    *is_usage_error = error != nullptr;
    if (!error)
        return command;
    std::fprintf(stderr, "vekhost: %s\n", error);
    return nullptr;
}
