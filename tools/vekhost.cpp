// vekhost: a small host that loads the library as the products and the solver
// do, asks it one thing and prints the answer.

#include "hsk_control.h"
#include "session.h"
#include "show.h"
#include "vek.h"

#include <CLI/CLI.hpp>

#include <cstdio>

enum exit_status {
    EXIT_GOOD = 0,
    EXIT_MISSING = 1, // a file is missing, or `session` went wrong
    EXIT_USAGE = 2,
    EXIT_NO_SESSION = 3
};

struct request {
    session_options session;
    std::string file_class;
    std::vector<std::string> names;
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
        app.add_flag("--solver", session.solver, "Make a solver run: the model names the plug-ins")
            ->option_text(" ")
            ->excludes(plugins);
    app.add_option("--model", session.model, "The model of the solver run")
        ->option_text("FILE")
        ->needs(solver);
}

static void describe_commands(CLI::App &app, request &asked)
{
    CLI::App *find = app.add_subcommand("find", "Print the real path of each name");
    find->add_option("--class", asked.file_class, "File class of the names")->option_text("CLASS");
    find->add_option("NAME", asked.names, "Name of a file, in any form")->required();
    app.add_subcommand("databases", "Print the databases in search order");
    app.add_subcommand("tables", "Print the tables");
    app.add_subcommand("session", "Only start, and say how it went");
    app.require_subcommand(1);
    app.footer(
        "Exit status: 0 all is well; 1 a file is missing, or the session that was asked for\n"
        "went wrong; 2 wrong usage; 3 there is no session to ask.");
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

static int answer(const request &asked, const session_outcome &outcome)
{
    if (outcome.code != 0)
        std::fprintf(stderr, "vekhost: %s\n", outcome.trouble.c_str());
    if (asked.command == "session") {
        show_session(outcome.code);
        return outcome.code == 0 ? EXIT_GOOD : EXIT_MISSING;
    }
    if (outcome.code != 0)
        return EXIT_NO_SESSION;
    if (asked.command == "find")
        return show_files(asked.names, asked.file_class, asked.session.solver) == 0 ? EXIT_GOOD
                                                                                    : EXIT_MISSING;
    if (asked.command == "tables")
        return show_tables() == 0 ? EXIT_GOOD : EXIT_MISSING;
    show_databases();
    return EXIT_GOOD;
}

int main(int count, char **words)
{
    CLI::App app("Asks the file-location library where files live.", "vekhost");
    request asked;
    describe_session(app, asked.session);
    describe_commands(app, asked);
    try {
        app.parse(count, words);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? EXIT_GOOD : EXIT_USAGE;
    }

    asked.command = app.get_subcommands().front()->get_name();

    // The answers keep standard output to themselves, and their place among
    // the library's lines when both go to one terminal or file.
    hsk_output_to_error();
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    return answer(asked, start(asked));
}
