// Parsing the command line.

#include "commands.h"

#include <CLI/CLI.hpp>

#include <iostream>

static string unknown_command(const string &name)
{
    strings names;
    std::ranges::transform(commands, std::back_inserter(names), &command::name);
    return name.empty() ? "a command is missing"
                        : "there is no command '" + name + "'" + did_you_mean(name, names);
}

// What is wrong with options and arguments that the parser accepts; empty: nothing.
static string usage_error(const command &command, const command_options &values)
{
    const string name = command.name, first = values.words.empty() ? "" : values.words[0];
    const bool is_for_products = name == "check" || values.why || values.all;
    if (values.words.size() < command.least || values.words.size() > command.most)
        return "usage: vekhost " + name + " " + command.arguments;
    if (first == "-" && (values.words.size() > 1 || !is_in(name, "find alias defaults complete")))
        return "\"-\" reads names for find, alias and defaults, without other names";
    if (values.session.solver && (is_for_products || !values.session.plugins.empty()))
        return "--solver excludes --plugin, check, --why and --all";
    if (!values.session.model.empty() && !values.session.solver)
        return "--model needs --solver";
    if (values.all && (values.why || values.file_class.empty()))
        return "find --all needs --class, and excludes --why";
    if (name == "copy" && values.words.size() != (values.database.empty() ? 2 : 1))
        return "copy takes a source and a target, or a source and --to-db";
    if (name == "report" && !is_in(first, "databases tables"))
        return "report takes \"databases\" or \"tables\", and a file";
    if (name == "help" && !first.empty() && !find_command(first))
        return unknown_command(first);
    return values.overwrites && values.backs_up ? "save takes --overwrite or --backup" : "";
}

static void add_options(CLI::App &app, command_options &values)
{
    app.set_help_flag(); // that of the table replaces it
    app.add_option("COMMAND", values.command);
    app.add_option("ARGUMENT", values.words);
    app.add_option("--plugin", values.session.plugins)->allow_extra_args(false);
    for (const option &option : options_of(values)) {
        CLI::Option *added = option.flag ? app.add_flag(option.name, *option.flag)
                                         : app.add_option(option.name, *option.text);
        if (split(option.values, "|").size() > 1)
            added->check(CLI::IsMember(split(option.values, "|")));
    }
    app.allow_windows_style_options(false); // "/" begins a path on every system
}

// Options of other commands are errors.
static string parse(CLI::App &app, strings words, command_options &values)
{
    std::reverse(words.begin(), words.end());
    try {
        app.parse(words);
    } catch (const CLI::ParseError &error) {
        return error.what();
    }
    output.json = output.json || values.format == "json";
    if (values.help)
        values.words = values.command.empty() ? strings() : strings{values.command};
    if (values.help || values.version)
        values.command = values.help ? "help" : "version";
    for (const option &option : options_of(values))
        if (!option.commands.empty() && !is_in(values.command, option.commands) &&
            find_command(values.command) && app.count(option.name) > 0)
            return values.command + " has no option " + option.name;
    return "";
}

const command *parse_command_line(int argc, char **argv, command_options &values)
{
    CLI::App app;
    add_options(app, values);
    strings words(argv + 1, argv + argc);
    if (!words.empty() && words[0] == "complete")
        words.insert(words.begin() + 1, "--");
    string error = parse(app, words, values);
    const command *command = find_command(values.command);
    if (error.empty())
        error = command ? usage_error(*command, values) : unknown_command(values.command);
    if (!error.empty())
        error += "\nRun 'vekhost help' for the commands.";
    return complain(error) ? nullptr : command;
}

int answer_names(const command_options &options, const std::function<bool(const string &)> &answer)
{
    int failed = 0;
    const bool reads_input = options.words == strings{"-"};
    for (const string &word : reads_input ? strings() : options.words)
        failed += answer(word) ? 0 : 1;
    for (string line; reads_input && std::getline(std::cin, line, output.nul ? '\0' : '\n');)
        failed += answer(line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0))) ? 0 : 1;
    return failed + complain(reads_input && ferror(stdin) ? "standard input cannot be read" : "");
}
