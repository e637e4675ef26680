// Commands for what the system or another process may do during an operation.

#include "commands.h"

#include "platform/durable.h"
#include "support/failing_malloc.h"
#include "support/recording_host.h"
#include "support/system_calls.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <regex>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

// What happens at the calls that match: the error of the nth one, of every other (nth -1) or
// of all (nth 0), or once the execution of a command before the call is made.
struct Rule {
    std::regex call;
    int error, nth;
    std::string command;
    int seen;
};
static std::vector<Rule> rules;
static Lines made; // since the last "calls"
static bool is_paused;

// The nth call or allocation of an operation fails, and with `persistent` all after it.
struct Failure {
    int nth;
    bool persistent;
    int made;
};
static Failure failure;

static const std::map<std::string, int> errors = {
    {"EACCES", EACCES}, {"EAGAIN", EAGAIN}, {"EBUSY", EBUSY},     {"EEXIST", EEXIST},
    {"EINTR", EINTR},   {"EINVAL", EINVAL}, {"EIO", EIO},         {"ENOENT", ENOENT},
    {"ENOLCK", ENOLCK}, {"ENOSPC", ENOSPC}, {"ENOTSUP", ENOTSUP}, {"EPERM", EPERM},
    {"EROFS", EROFS},   {"EXDEV", EXDEV}};

static int error_of(const std::string &call)
{
    if (is_paused)
        return 0;
    made.push_back(call);
    const int later = call.starts_with("print ") ? -1 : ++failure.made - failure.nth;
    if (failure.nth > 0 && (later == 0 || (later > 0 && failure.persistent)))
        return EIO;
    for (size_t i = 0; i < rules.size(); ++i) {
        if (!std::regex_search(call, rules[i].call))
            continue;
        const int seen = ++rules[i].seen;
        if (rules[i].command.empty()) {
            if (rules[i].nth == 0 || seen == rules[i].nth || (rules[i].nth < 0 && seen % 2 == 1))
                return rules[i].error;
        } else if (seen == rules[i].nth || rules[i].nth == 0) {
            const std::string command = rules[i].command;
            const Lines earlier = host::calls;
            is_paused = true;
            made.push_back(command + execute(command, ""));
            is_paused = false;
            host::calls = earlier;
        }
    }
    return 0;
}

std::string run_operation(const Command &operation, Arguments &arguments)
{
    if (is_paused)
        return operation(arguments);
    const Lines open_files = listing("/proc/self/fd");
    calls::error_for = error_of;
    host::when_print = [](const char *text) { error_of(std::string("print ") + text); };
    std::string result = operation(arguments);
    calls::error_for = nullptr;
    host::when_print = nullptr;
    const Lines left = listing("/proc/self/fd");
    return std::ranges::includes(open_files, left) ? result : result + " leaves a file open";
}

// "refuse CALL ERROR [NTH]": CALL is a regular expression of what "calls" shows.
static std::string refuse(Arguments &arguments)
{
    const std::string call = arguments.next(), error = arguments.next();
    const int nth = arguments.is_used_up() ? 0 : std::stoi(arguments.next());
    rules.push_back({std::regex(call), errors.at(error), nth, "", 0});
    return "";
}

// "on CALL COMMAND", also for "print TEXT"; "always CALL COMMAND": not only once.  "calls"
// shows the result.
template <int nth> static std::string on(Arguments &arguments)
{
    const std::string call = arguments.next();
    rules.push_back({std::regex(call), 0, nth, arguments.rest(), 0});
    return "";
}

static std::string allow(Arguments &)
{
    rules.clear();
    return "";
}

static std::string show_calls(Arguments &arguments)
{
    const std::regex shown(arguments.is_used_up() ? "" : arguments.next());
    std::string all;
    for (const std::string &call : made)
        if (std::regex_search(call, shown))
            all += "\n  " + encode(call);
    made.clear();
    return all.empty() ? " = none" : all;
}

static std::string lock(Arguments &arguments)
{
    static intptr_t held = -1;
    if (arguments.is_used_up())
        platform_unlock(held);
    else
        held = platform_lock_file(arguments.next().c_str(), 0);
    return held < 0 ? " fails" : "";
}

// "as USER COMMAND", for root only.
static std::string as(Arguments &arguments)
{
    const auto user = static_cast<uid_t>(std::stoul(arguments.next()));
    if (seteuid(user) != 0)
        return " fails";
    std::string result = execute(arguments.rest(), arguments.text);
    return seteuid(0) == 0 ? result : " fails";
}

// "acl access PATH" or "acl default DIRECTORY": user 65534 may read the file, or new files.
static std::string acl(Arguments &arguments)
{
    const std::string name = "system.posix_acl_" + arguments.next();
    const char list[] =
        "\2\0\0\0\1\0\6\0\377\377\377\377\2\0\4\0\376\377\0\0\4\0\4\0\377\377\377\377"
        "\20\0\4\0\377\377\377\377\40\0\0\0\377\377\377\377";
    const bool fails = setxattr(arguments.next().c_str(), name.c_str(), list, 44, 0) != 0;
    return fails ? " fails" : "";
}

static std::string fail_nth_allocation(Arguments &arguments)
{
    const int nth = std::stoi(arguments.next());
    fail_allocation(nth, !arguments.is_used_up() && arguments.next() == "persistent");
    return "";
}

static std::string mode(Arguments &arguments)
{
    struct stat status = {};
    char text[16];
    lstat(arguments.next().c_str(), &status);
    snprintf(text, sizeof text, " = %o", status.st_mode & 07777);
    return text;
}

static std::string chown_file(Arguments &arguments)
{
    const auto user = static_cast<uid_t>(std::stoul(arguments.next()));
    return chown(arguments.next().c_str(), user, user) == 0 ? "" : " fails";
}

// "close NUMBER": of a standard stream.
static std::string close_stream(Arguments &arguments)
{
    return close(std::stoi(arguments.next())) == 0 ? "" : " fails";
}

// "fork": a child that exits.
static std::string fork_child(Arguments &)
{
    if (fork() == 0)
        exit(0);
    wait(nullptr);
    return "";
}

// "traced COMMAND" shows a system call tracer where the command begins, and its result, even if
// all other calls fail.
static std::string traced(Arguments &arguments)
{
    is_paused = true; // no calls of the tests themselves
    access("begin", F_OK);
    const std::string result = execute(arguments.rest(), arguments.text);
    access(("end" + result).c_str(), F_OK);
    return result;
}

// What an operation may change in a session.
static std::string session_state()
{
    std::string all = execute("databases", "");
    for (const char *part :
         {"get_write_default", "get_def_propfile spring", "get_def_testrig spring"})
        all += execute(std::string("vorn_vek_") + part, "");
    return all;
}

static const std::regex report("malloc_failure|Malloc failed|Cannot allocate|cannot open file");

// Runs a command while the nth allocation or call fails, or all from there on, and then the
// lines that have to work.  Returns what is wrong, or "done" if none failed.
static std::string run_with(const Failure &planned, bool of_calls, const std::string &command,
                            const std::string &usual, const std::string &afterwards)
{
    const std::string before = session_state();
    failure = of_calls ? planned : Failure();
    fail_allocation(of_calls ? 0 : planned.nth, planned.persistent);
    const std::string result = execute(command, "");
    const bool has_failed = of_calls ? failure.made >= planned.nth : lacked_memory;
    failure = {};
    if (planned.nth == 0 || !has_failed)
        return planned.nth == 0 ? result : "done";
    std::string wrong;
    if (of_calls ? result.find("leaves") != result.npos
                 : !planned.persistent && result != usual && !std::regex_search(result, report))
        wrong = (of_calls ? "" : " is not reported") + result;
    if (!of_calls && result.compare(0, 4, usual, 0, 4) != 0 && before.starts_with("\n") &&
        session_state() != before)
        wrong += " is not undone:" + session_state();
    for (const std::string &line : lines_of(afterwards))
        if (const std::string shown = run_line(line, "")[0];
            shown != line && line.find(" = ") != line.npos)
            wrong += "\n  " + shown;
    return wrong;
}

#ifdef __SANITIZE_ADDRESS__
constexpr int stride = 7; // children are ten times slower
#else
constexpr int stride = 1;
#endif

// "scarce COMMAND": in children, memory runs out at each allocation of the command in turn.
// "refused COMMAND": each of its calls fails, or with "denied" all from there on, and it crashes
// never and closes all files; the test refused_calls sees the rest.  Below it stand the lines that
// work afterwards, also after the next such commands.
template <bool of_calls, bool of_all> static std::string fail_each(Arguments &arguments)
{
    static std::string afterwards;
    if (!arguments.text.empty())
        afterwards = arguments.text;
    const std::string command = arguments.rest(), saved = home_dir + "-tmp/saved";
    std::filesystem::copy(home_dir, saved, std::filesystem::copy_options::recursive);
    std::string usual, all, verdict;
    for (int i = 0; verdict != "done" && all.size() < 10000; i += stride) {
        if (fork() == 0) {
            const Failure planned = {of_calls ? i : (i + 1) / 2, of_calls ? of_all : i % 2 == 0, 0};
            write_file(saved + "-verdict", run_with(planned, of_calls, command, usual, afterwards));
            exit(0);
        }
        int status;
        wait(&status);
        verdict = status == 0 ? read_file(saved + "-verdict") : " died";
        if (i == 0)
            usual = verdict;
        else if (verdict != "" && verdict != "done")
            all += "\n  failure " + std::to_string(i) + verdict;
        for (const std::string &name : listing(home_dir))
            std::filesystem::remove_all(name);
        std::filesystem::copy(saved, home_dir, std::filesystem::copy_options::recursive);
    }
    std::filesystem::remove_all(saved);
    for (const std::string &line : lines_of(arguments.text))
        all += "\n  " + line;
    return all;
}

const std::map<std::string, Command> system_commands = {
    {"refuse", refuse},
    {"on", on<1>},
    {"allow", allow},
    {"calls", show_calls},
    {"lock", lock},
    {"unlock", lock},
    {"as", as},
    {"allocation", fail_nth_allocation},
    {"mode", mode},
    {"chown", chown_file},
    {"acl", acl},
    {"always", on<0>},
    {"fork", fork_child},
    {"close", close_stream},
    {"traced", traced},
    {"scarce", fail_each<false, false>},
    {"refused", fail_each<true, false>},
    {"denied", fail_each<true, true>},
};
