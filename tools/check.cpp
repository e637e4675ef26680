// Checking configuration files, and a start.

#include "commands.h"

#include <regex>

static void print_diagnostics(const vector<diagnostic> &diagnostics)
{
    for (const auto &[where, level, code, text, variable] : diagnostics) {
        const bool is_error = level == ERROR;
        const string severity = is_error ? "error" : "warning";
        const string line = where.line > 0 ? std::to_string(where.line) : "";
        const string column = where.line > 0 ? std::to_string(where.column) : "";
        string place = where.file.empty() ? "vekhost" : where.file;
        place += line.empty() ? ": " : ":" + line + ":" + column + ": ";
        if (level == CONSEQUENCE)
            continue;
        print_answer({"file line# column# severity code message",
                      {where.file, line, column, severity, code, text}},
                     place + in_colour(stdout, is_error ? RED : YELLOW, severity + ":") + " " +
                         text + " [" + code + "]");
    }
}

// The first file is shared, if nothing else is said.  Those after the private file are of plug-ins.
static vector<cfg_file> files_of(const command_options &options)
{
    vector<cfg_file> files;
    cfg_role next = options.role == "site"     ? CFG_SITE
                    : options.role == "plugin" ? CFG_PLUGIN
                                               : CFG_SHARED;
    for (const string &path : options.words) {
        const bool is_last = options.role == "private" && path == options.words.back();
        const bool is_private = is_last || fs::path(path).filename() == ".vorn.cfg";
        files.push_back({path, is_private ? CFG_PRIVATE : next});
        next = files.back().role < CFG_PRIVATE ? CFG_SITE : CFG_PLUGIN;
    }
    return files;
}

int lint_files(const command_options &options)
{
    const vector<cfg_file> files = files_of(options);
    const string given = options.session.product, named = environment("KLV_PRODUCT_NAME");
    const string product = given.empty() ? named : given,
                 stem = fs::path(files[0].path).stem().string();
    configuration all = read_configuration(files, product.empty() ? stem : product);
    if (options.strict)
        for (diagnostic &fault : all.diagnostics)
            fault.level = fault.level == WARNING ? ERROR : fault.level;
    print_diagnostics(all.diagnostics);
    return std::ranges::count(all.diagnostics, ERROR, &diagnostic::level) > 0;
}

// Adds what the library reports of a start, unless it only follows from faults that are known.
// A report may take several entries: those after the first begin with two spaces.
static void add_report(vector<diagnostic> &faults, const string &line, bool *is_added)
{
    static const std::regex form("\\w+(?: in|: )( *)([^]*)"), spaces("\\s+"),
        place("line (\\d+) of cfg_file '(.*?)'"),
        summary("Erroneous statement|Possible syntax|Continuing init|Recommend exiting"),
        consequence("No default writable|No vek's|No tables|Number of tables|fatal config|"
                    "will not be configured|Statement ignored|The table |Line exceeds|[Vv]ariable|"
                    "not writable by|Fatal config|No valid DATABASE|Expanding|Private cfg file|"
                    "not be updated|Cannot create private");
    std::smatch parts, at;
    location where;
    if (!std::regex_match(line, parts, form) || std::regex_search(line, summary))
        return;
    const string text = std::regex_replace(parts[2].str(), spaces, " ");
    if (parts[1].length() > 1 && *is_added)
        faults.back().text += " " + text;
    if (parts[1].length() > 1)
        return;
    *is_added = std::ranges::count(faults, ERROR, &diagnostic::level) == 0 ||
                !std::regex_search(line, consequence);
    if (std::regex_search(line, at, place)) {
        where = {at[2], std::stoi(at[1]), 1, std::stoi(at[1]), 0};
        *is_added = std::ranges::none_of(faults, [&](const diagnostic &fault) {
            return fault.where.file == where.file && fault.where.cfg_line == where.cfg_line;
        });
    }
    if (*is_added)
        faults.push_back({where, line[0] == 'W' ? WARNING : ERROR, "start", text});
}

static string counted(long long count, const char *what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

int check_session(const command_options &options)
{
    strings lines;
    bool is_added = false;
    configuration all = next_session(options.session);
    const string fault = current_directory_fault();
    if (!fault.empty())
        all.diagnostics.push_back({location(), ERROR, "current-directory", fault});
    print_rows(all.candidates);
    output.collected = &lines;
    const int code = start_session(options.session, false);
    output.collected = nullptr;
    for (const string &line : lines)
        if (is_fault(line) && fault.empty())
            add_report(all.diagnostics, line, &is_added);
    print_diagnostics(all.diagnostics);
    const auto errors = std::ranges::count(all.diagnostics, ERROR, &diagnostic::level);
    const auto warnings = std::ranges::count(all.diagnostics, WARNING, &diagnostic::level);
    print_answer({"errors# warnings#", {std::to_string(errors), std::to_string(warnings)}},
                 counted(errors, "error") + " and " + counted(warnings, "warning") + " in " +
                     (all.found.empty() ? "no file" : all.found));
    return code == 0 && errors + warnings == 0 ? 0 : 1;
}
