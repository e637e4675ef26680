// How shells complete a command line.  No session is started, and nothing on disk changes.

#include "commands.h"

// Names of the form that the word begins.  The files of a table are offered once it is named.
static strings names_in_databases(const configuration &files, const string &start)
{
    strings names;
    std::error_code error;
    vector<entry> databases = files.databases;
    if (const entry *shared = find_entry(databases, files.product + "_shared"))
        databases.push_back({"shared", shared->value, {}});
    const bool is_url = start.starts_with('k');
    const string before = is_url ? "klvds://" : "<", after = is_url ? "/" : ">/";
    for (const entry &database : databases)
        for (const entry &table : files.tables) {
            const string name = before + database.name + after + table.value + "/";
            const string dir = start.starts_with(name) ? database.value + "/" + table.value : "";
            names.push_back(name);
            for (const auto &file : fs::directory_iterator(dir, error))
                names.push_back(name + file.path().filename().string());
        }
    return names;
}

static strings words_for(const string &description, const configuration &files, const string &start)
{
    const strings kinds = split(description, " .[]");
    const string kind = kinds.empty() ? "" : kinds[0];
    strings names;
    for (const command &command : commands)
        if (kind == "COMMAND" && *command.group)
            names.push_back(command.name);
    return kind == "CLASS"                ? names_of(files.tables)
           : kind == "DATABASE"           ? names_of(files.databases)
           : kind == "NAME"               ? names_in_databases(files, start)
           : kind.find('|') < kind.size() ? split(kind, "|")
                                          : names;
}

// The words are those of the command line, without "vekhost", up to the cursor.
int complete_words(const command_options &options)
{
    command_options values;
    string before, last, description = "COMMAND";
    for (const string &word : options.words) {
        if (before == "--product")
            values.session.product = last;
        if (before == "--plugin")
            values.session.plugins.push_back(last);
        if (values.command.empty() && find_command(last)) {
            values.command = last;
            description = find_command(last)->arguments;
        }
        before = last;
        last = word;
    }
    strings names = {"--plugin"};
    for (const option &option : options_of(values)) {
        if (before == option.name && option.text)
            description = option.values;
        if (option.commands.empty() || is_in(values.command, option.commands))
            names.push_back(split(option.name, ",").back());
    }
    if (!last.starts_with('-'))
        names = words_for(description, next_session(values.session), last);
    for (const string &name : names)
        if (name.starts_with(last) && name != last)
            print_answer(name);
    return 0;
}
