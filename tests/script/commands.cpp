// The commands of scripts that are not operations of the library.

#include "commands.h"

#include "registry/registry.h"
#include "solver/environment_table.h"
#include "support/failing_malloc.h"
#include "support/recording_host.h"
#include "support/system.h"

#include <algorithm>
#include <filesystem>
#include <regex>

namespace fs = std::filesystem;

// Lines below a command: " = none" or " = empty" if there are no lines.
static std::string below(const std::string &text)
{
    std::string all = text.empty() ? " = empty" : "";
    for (const std::string &line : lines_of(text))
        all += "\n  " + encode(line);
    return text.empty() || text.back() == '\n' ? all : all + "{eof}";
}

static std::string joined(const Lines &words)
{
    std::string all = " =";
    for (const std::string &word : words)
        all += " " + quoted(word);
    return words.empty() ? " = none" : all;
}

static std::string yes_or_no(bool is)
{
    return is ? " = yes" : " = no";
}

// "file PATH" and the lines below, or "file PATH TEXT", which has no newline.
static std::string file(Arguments &arguments)
{
    const std::string path = arguments.next(), end = "{eof}\n";
    std::string text = arguments.text;
    if (!arguments.is_used_up())
        return write_file(path, arguments.next()), "";
    if (text.ends_with(end))
        text.erase(text.size() - end.size());
    write_file(path, decode(text));
    return arguments.text.empty() ? "" : below(arguments.text);
}

// "print PATH REGEX" leaves out what matches.
static std::string print(Arguments &arguments)
{
    const std::string path = arguments.next();
    const std::regex cut(arguments.is_used_up() ? "$." : arguments.next(), std::regex::multiline);
    return fs::exists(path) ? below(std::regex_replace(read_text(path), cut, "")) : " = none";
}

static std::string names(Arguments &)
{
    Lines all;
    for (int level = 1; level <= vorn_vek_get_number_of_veks(); ++level)
        all.push_back(vorn_vek_level2db(level));
    return joined(all);
}

// Each database as "name path index: class index, ...".
static std::string databases(Arguments &)
{
    std::string rows;
    for (int level = 0; level < number_of_veks; ++level) {
        const vek_db_rec &db = *vek_list[level];
        rows += std::string(db.name) + " " + db.path + " " + std::to_string(db.cfg_index);
        for (int i = 0; i < db.tbl_count; ++i)
            rows += std::string(i == 0 ? ": " : ", ") + db.tbls[i]->class_ + " " +
                    std::to_string(db.tbls[i]->cfg_index);
        rows += "\n";
    }
    return below(rows);
}

static std::string env(Arguments &arguments)
{
    if (arguments.words.size() == 1) {
        const char *value = getenv(arguments.next().c_str());
        return value == nullptr ? " = unset" : " = " + quoted(value);
    }
    const std::string name = arguments.next();
    set_variable(name, arguments.next());
    return "";
}

// Runs a program that reads the file "stdin", and writes the files "stdout" and "stderr".
static std::string run_redirected(const Lines &words)
{
    if (freopen("stdin", "r", stdin) == nullptr || freopen("stdout", "w", stdout) == nullptr ||
        freopen("stderr", "w", stderr) == nullptr)
        return " fails";
    const std::string status = " = " + std::to_string(run_program(words));
    const std::string output = read_text("stdout");
    if (lines_of(output).size() == 1)
        return status + joined(lines_of(output)).substr(2);
    return output.empty() ? status : status + below(output);
}

static std::string vekhost(Arguments &arguments)
{
    arguments.words.insert(arguments.words.begin(), VEKHOST);
    return run_redirected(arguments.words);
}

// "shell LINE", in which "vekhost" is the tool.
static std::string shell(Arguments &arguments)
{
    const std::string tool = "vekhost() { " VEKHOST " \"$@\"; }; ";
    return run_redirected({"/bin/sh", "-c", tool + arguments.next()});
}

// "plant FILE LINE" shows what "vekhost lint" prints about the files of the block "sample" while
// the line ends one of them, whose name is left out.
static std::string plant(Arguments &arguments)
{
    const std::string path = arguments.next(), before = read_file(path);
    write_file(path, before + unquoted(arguments.rest()) + "\n");
    execute("vekhost lint inst/kestrel.cfg site/kestrel.cfg .vorn.cfg heron.cfg", "");
    write_file(path, before);
    Lines shown = lines_of(read_text("stdout") + read_text("stderr"));
    for (std::string &line : shown)
        line.erase(0, line.starts_with(path + ":") ? path.size() + 1 : 0);
    return joined(shown);
}

// "each FIRST LAST COMMAND" puts each number in the place of {i}, and shows the results that
// differ with it.
static std::string each(Arguments &arguments)
{
    const int first = std::stoi(arguments.next()), last = std::stoi(arguments.next());
    const std::string command = arguments.rest();
    Lines results;
    for (int i = first; i <= last; ++i) {
        const std::string number = std::to_string(i);
        const std::string result = execute(replaced(command, "{i}", number), "");
        results.push_back(replaced(result, number, "{i}"));
    }
    results.erase(std::unique(results.begin(), results.end()), results.end());
    std::string all;
    for (const std::string &result : results)
        all += result;
    return all;
}

// "matches COMMAND REGEX": what a command shows that differs between builds.
static std::string matches(Arguments &arguments)
{
    const std::string shown = execute(arguments.next(), "");
    return yes_or_no(std::regex_search(shown, std::regex(arguments.next())));
}

// The digest (FNV-1a) of the variables that the environment report knows, each with a newline,
// and those whose description is no sentence.
static std::string catalogue(Arguments &)
{
    uint32_t digest = 2166136261;
    const std::regex sentence("SKIP|[A-Z][\\w /.,;:()<>=%'+\n[\\]-]*\\.");
    std::string all;
    for (short i = 0; i < vek_env_count; ++i) {
        for (const char character : std::string(vek_env_table[i].name) + "\n")
            digest = (digest ^ static_cast<unsigned char>(character)) * 16777619;
        if (!std::regex_match(vek_env_table[i].text, sentence))
            all += " " + std::string(vek_env_table[i].name);
    }
    return " = " + std::to_string(digest) + all;
}

static Command does(void (*action)(const std::string &))
{
    return [=](Arguments &arguments) {
        for (const std::string &word : arguments.words)
            action(word);
        return std::string();
    };
}

static Command does(void (*action)(const std::string &, const std::string &))
{
    return [=](Arguments &arguments) {
        const std::string first = arguments.next();
        action(first, arguments.next());
        return std::string();
    };
}

bool lacked_memory;
static bool shows_all_calls; // of the core library

static std::string trace(Arguments &)
{
    shows_all_calls = true;
    return "";
}

const std::map<std::string, Command> commands = {
    {"file", file},
    {"dir", does(make_dir)},
    {"pipe", does(make_pipe)},
    {"link",
     does([](const std::string &path, const std::string &to) { fs::create_symlink(to, path); })},
    {"hardlink",
     does([](const std::string &path, const std::string &to) { fs::create_hard_link(to, path); })},
    {"remove", does([](const std::string &path) { fs::remove_all(path); })},
    {"rename", does([](const std::string &from, const std::string &to) { fs::rename(from, to); })},
    {"cd", does([](const std::string &path) { fs::current_path(path); })},
    {"chmod", does([](const std::string &mode, const std::string &path) {
         fs::permissions(path, fs::perms(std::stoi(mode, nullptr, 8)));
     })},
    {"env", env},
    {"unset", does(unset)},
    {"answer", does([](const std::string &button) { host::answer = std::stoi(button); })},
    {"model", does([](const std::string &plugins) { host::plugin_list = plugins; })},
    {"trace", trace},
    {"vekhost", vekhost},
    {"shell", shell},
    {"plant", plant},
    {"print", print},
    {"read", [](Arguments &arguments) { return " = " + quoted(read_file(arguments.next())); }},
    {"list", [](Arguments &arguments) { return joined(listing(arguments.next())); }},
    {"exists", [](Arguments &arguments) { return yes_or_no(fs::exists(arguments.next())); }},
    {"names", names},
    {"databases", databases},
    {"each", each},
    {"catalogue", catalogue},
    {"matches", matches},
    {"setting", does([](const std::string &id, const std::string &value) {
         host::settings[std::stoi(id)] = std::stoi(value);
     })},
    {"hold", [](Arguments &) { return held_result = last_result, std::string(); }},
    {"held", [](Arguments &) { return " = " + quoted(held_result); }},
};

// The lines for the user, dialogs and variables set since the last command.
static std::string host_calls()
{
    std::string all;
    const std::string print = "vc_str_print(";
    for (const std::string &call : host::calls) {
        if (call.starts_with(print))
            all += "\n  " + encode(call.substr(print.size(), call.size() - print.size() - 1));
        else if (shows_all_calls || call.starts_with("vc_") || call.starts_with("register_"))
            all += "\n  " + encode(call);
    }
    host::calls.clear();
    return all;
}

std::string Arguments::next()
{
    return words.at(used++);
}

bool Arguments::is_used_up() const
{
    return used == words.size();
}

std::string Arguments::rest()
{
    std::string all;
    while (!is_used_up())
        all += (all.empty() ? "" : " ") + raw[used++];
    return all;
}

// Throws if there is none of the name.
static std::string run(const std::string &name, Arguments &arguments)
{
    if (auto found = operations.find(name); found != operations.end()) {
        const std::string result = run_operation(found->second, arguments);
        lacked_memory = stop_failing();
        return arguments.is_used_up() ? result : " has too many arguments";
    }
    auto found = system_commands.find(name);
    return (found == system_commands.end() ? commands.at(name) : found->second)(arguments);
}

std::string execute(const std::string &command, const std::string &text)
{
    Arguments arguments;
    arguments.raw = words_of(command);
    arguments.text = text;
    const std::string name = arguments.raw.at(0);
    arguments.raw.erase(arguments.raw.begin());
    for (const std::string &word : arguments.raw)
        arguments.words.push_back(unquoted(word));
    try {
        const std::string result = run(name, arguments);
        return result + host_calls();
    } catch (const std::exception &error) {
        return std::string(" is wrong: ") + error.what();
    }
}
