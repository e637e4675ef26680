// The help: one screen of 80 columns and 24 lines, and the use of one command.

#include "commands.h"

static string padded(string text, size_t width)
{
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

static string all_commands()
{
    string text, group, line;
    for (const command &command : commands) {
        if (group != command.group || line.size() > 50) {
            text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
            line = padded(group != command.group ? command.group : "", 8);
        }
        group = command.group;
        line = padded(line + padded(command.name, 13) + command.brief, 43);
    }
    return text;
}

static string use_of(const command &command)
{
    command_options values;
    const string name = command.name, arguments = command.arguments;
    string text = "Usage: vekhost " + name + (arguments.empty() ? "" : " ") + arguments + "   (" +
                  command.brief + ")\n" + command.more;
    for (const option &option : options_of(values))
        if (option.commands.empty() || is_in(name, option.commands))
            text += "  " + padded(option.name + " " + option.values, 32) + option.help + "\n";
    return text + "  --plugin NAME                   A plug-in to start; may be given again";
}

int show_help(const command_options &options)
{
    const string all =
        "Usage: vekhost [OPTION]... COMMAND [ARGUMENT]...   (help COMMAND: more)" + all_commands() +
        "\n"
        "Options --product NAME, --plugin NAME (repeated for more), -v (all lines),\n"
        "        --solver, --model FILE, --json (JSON Lines), -0 (NUL), --version\n\n"
        "vekhost --product kestrel find '<shared>/dampers.tbl/road_front.dpr'\n"
        "vekhost find --why --class spring '<shared>/springs.tbl/soft.spr'\n"
        "vekhost lint install/kestrel.cfg site/kestrel.cfg ~/.vorn.cfg\n\n"
        "Status  0 done; 1 not found, not kept or failed; 2 usage; 3 no session";
    print_answer(options.words.empty() ? all : use_of(*find_command(options.words[0])));
    return 0;
}
