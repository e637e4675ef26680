// Commands that change the session, and whether the next one will have the change.

#include "commands.h"
#include "hsk_control.h"
#include "vek.h"

#include <iostream>
#include <unistd.h>

// Says that a change does not last, and why.  Returns 1.
static int report_lost(const configuration &next, const string &what, string reason)
{
    const string &path = next.private_file;
    if (access(path.c_str(), W_OK) != 0)
        reason = "the private file '" + path + "' cannot be written";
    if (environment("KLV_UPDATE_CFG") == "no")
        reason = "KLV_UPDATE_CFG is \"no\"";
    complain(what + " for this run only: " + reason);
    return 1;
}

// Whether later sessions have a database at the level that it has now.
static int check_level(const command_options &options, const string &name)
{
    const configuration next = next_session(options.session);
    const entry *later = find_entry(next.databases, name);
    const int level = later ? (int)(later - next.databases.data()) + 1 : 0;
    const string fault =
        "' has level " + std::to_string(level) + " later, by the order of the files";
    return complain(level == vorn_vek_db2level(name.c_str()) ? "" : "'" + name + fault);
}

// 0 if the text is no number.
static int level_of(const string &text)
{
    const bool is_number = text.size() < 6 && text.find_first_not_of("0123456789") == string::npos;
    return is_number ? atoi(text.c_str()) : 0;
}

// What keeps a database from being added, or the private file from holding it; empty: nothing.
static string add_fault(const string &name, const string &path, int level)
{
    const size_t longest = 266, length = strlen("DATABASE  ") + name.size() + path.size();
    if (name.find_first_of(" \t\r\n\v\f!") < name.size() || name.empty() || name == "shared")
        return "the name must be one word without \"!\", and not \"shared\"";
    if (name.size() >= VEK_DB_NAME_SIZE)
        return "the name has more than 30 characters";
    if (vorn_vek_db2level(name.c_str()) > 0)
        return "there is a database of this name";
    if (path.find_first_of("!$\n") < path.size() || length > longest)
        return "the private file cannot hold so long a path, or \"!\", \"$\" or a newline in it";
    return level > 0 && level <= vorn_vek_get_number_of_veks() + 1 ? "" : "there is no such level";
}

int add_database(const command_options &options)
{
    const string &name = options.words[0], path = clean_path(options.words[1]);
    const int last = vorn_vek_get_number_of_veks() + 1;
    const int level = options.level.empty() ? last : level_of(options.level);
    const string fault = add_fault(name, path, level);
    if (complain(fault.empty() ? "" : "'" + name + "' is not added: " + fault) ||
        vorn_vek_db_add(name.c_str(), path.c_str(), level) != 0)
        return 1;
    const configuration next = next_session(options.session);
    if (!find_entry(next.databases, name))
        return report_lost(next, "'" + name + "' is added", "the private file lacks its line");
    return options.level.empty() ? 0 : check_level(options, name);
}

int remove_database(const command_options &options)
{
    const string &name = options.words[0];
    if (complain(unknown_database(name)) || vorn_vek_db_remove(name.c_str()) != 0)
        return 1;
    const configuration next = next_session(options.session);
    const entry *later = find_entry(next.databases, name);
    if (!later)
        return 0;
    return report_lost(next, "'" + name + "' is removed",
                       place_of(later) + " defines '" + later->name + "'");
}

enum write_button { OVERWRITE = 1, BACK_UP = 2, CANCEL = 3 };

// A statement that the file cannot hold is a warning.
static bool write_private_file(int button)
{
    const int warnings = hsk_warning_count();
    hsk_queue_answer(button);
    return vorn_sav_cfg() == 1 && hsk_warning_count() == warnings;
}

int move_database(const command_options &options)
{
    const string &name = options.words[0];
    if (complain(unknown_database(name)) ||
        vorn_vek_db_reorder(name.c_str(), level_of(options.words[1])) != 0)
        return 1;
    show_databases(options);
    if (options.saves)
        return write_private_file(BACK_UP) ? check_level(options, name) : 1;
    complain("the order is for this run only; --save writes it to the private file");
    return 0;
}

int set_or_show_default(const command_options &options)
{
    const char *chosen = vorn_vek_get_write_default();
    if (options.words.empty() && chosen)
        print_answer({"name", {chosen}}, chosen);
    if (options.words.empty())
        return complain(chosen ? "" : "there is no default writable database");
    const string &name = options.words[0];
    session_options product = options.session;
    product.plugins.clear();
    const bool is_late = !find_entry(next_session(product).databases, name);
    if (complain(unknown_database(name)) ||
        complain(is_late ? "a plug-in's file, read after the private file, defines it" : "") ||
        vorn_vek_set_write_default(name.c_str()) != 0)
        return 1;
    const configuration next = next_session(options.session);
    if (equal_nocase(next.write_default.name, name))
        return 0;
    const string place = place_of(&next.write_default), kept = "'" + next.write_default.name + "'";
    return report_lost(next, "'" + name + "' is the default",
                       place.empty() ? "no file has a DEFAULT_WRITE_DB" : place + " names " + kept);
}

// The end of the input cancels.
int save_session(const command_options &options)
{
    int button = options.overwrites ? OVERWRITE : options.backs_up ? BACK_UP : 0;
    for (string line; button == 0;) {
        std::cerr << "The private file will be rewritten: 1 overwrite, 2 back up first, 3 cancel "
                     "[2]\n";
        button = !std::getline(std::cin, line) ? CANCEL
                 : line.empty()                ? BACK_UP
                 : is_in(line, "1 2 3")        ? line[0] - '0'
                                               : 0;
    }
    return button != CANCEL && write_private_file(button) ? 0 : 1;
}
