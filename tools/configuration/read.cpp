// Reading configuration files line by line.

#include "statements.h"

#include <fstream>
#include <tuple>

// The longest part of a line, with its newline, in the reader of ENVIRONMENT and in the other.
const size_t ENVIRONMENT_LIMIT = 255, LIMIT = 267;

static vector<word> words_of(const string &line)
{
    const char *spaces = " \t\n\v\f\r";
    vector<word> words;
    for (size_t start, end = 0; (start = line.find_first_not_of(spaces, end)) < line.size();) {
        end = std::min(line.find_first_of(spaces, start), line.size());
        words.push_back({line.substr(start, end - start), start});
    }
    return words;
}

static vector<statement> split_lines(configuration &all, const cfg_file &file, size_t limit)
{
    vector<statement> parts;
    location where = {file.path, 1, 1, 1, file.number};
    for (size_t next = 0; next < file.text.size(); next += parts.back().length) {
        const string part = file.text.substr(next, limit);
        const size_t length = std::min(part.find('\n'), part.size() - 1) + 1;
        const bool is_end = part[length - 1] == '\n';
        const string line = part.substr(0, length - (is_end ? 1 : 0));
        const size_t end = strcspn(line.c_str(), "!");
        parts.push_back({all, file.role, where, line, length, end, words_of(line.substr(0, end))});
        where.column = is_end ? 1 : where.column + (int)length;
        where.line += is_end ? 1 : 0;
        ++where.cfg_line;
    }
    return parts;
}

// Every line gets a newline, and a carriage return before one does not count.  False, after a
// report, if there are no statements to read.
static bool load(configuration &all, cfg_file &file)
{
    const location whole = {file.path, 0, 0, 0, file.number};
    std::ifstream stream(file.path, std::ios::binary);
    for (string line; std::getline(stream, line);)
        file.text += line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0)) + "\n";
    const bool is_utf_16 = file.text.starts_with("\xFF\xFE") || file.text.starts_with("\xFE\xFF");
    const bool is_read = stream.is_open() && !stream.bad();
    if (!is_read)
        all.diagnostics.push_back({whole, ERROR, "unreadable", strerror(errno)});
    if (is_utf_16)
        all.diagnostics.push_back({whole, ERROR, "utf-16", "not read; use UTF-8"});
    return is_read && !is_utf_16;
}

static void read_lines(configuration &all, const cfg_file &file, bool is_environment)
{
    const size_t limit = is_environment ? ENVIRONMENT_LIMIT : LIMIT;
    vector<statement> parts = split_lines(all, file, limit);
    for (size_t i = 0, skipped = 0; i < parts.size(); ++i) {
        parts[i].where.cfg_line -= (int)skipped; // the library does not count them
        if (is_environment || parts[i].end < limit)
            read_statement(parts[i], is_environment);
        else if (!fault_at(parts[i], 0, "too-long", "a statement of more than 266 characters"))
            for (bool is_full = true; is_full && i + 1 < parts.size(); ++skipped)
                is_full = parts[++i].length == limit;
    }
}

// The ENVIRONMENT statements of all files of the product come first.  Each file of a plug-in
// follows with its own.
void read_files(configuration &all, const vector<cfg_file> &files)
{
    vector<vector<cfg_file>> groups(1);
    for (cfg_file file : files) {
        file.number = ++all.file_count;
        if (file.role == CFG_PRIVATE)
            all.private_file = file.path;
        if (file.role == CFG_PLUGIN)
            groups.emplace_back();
        if (load(all, file))
            groups.back().push_back(file);
    }
    for (const vector<cfg_file> &group : groups)
        for (const bool is_environment : {true, false})
            for (const cfg_file &file : group)
                read_lines(all, file, is_environment);
}

// A variable may be set after the line that uses it.
void finish(configuration &all)
{
    const auto order = [](const location &at) { return std::tuple(at.number, at.line, at.column); };
    for (diagnostic &fault : all.diagnostics)
        for (const entry &setting : all.variables)
            if (setting.name == fault.variable && order(setting.where) > order(fault.where))
                fault.text = "'" + setting.name + "' is set later, in " + place_of(&setting);
    const severity level = all.rejected.empty() ? ERROR : CONSEQUENCE;
    if (all.is_whole && !all.private_file.empty() && all.write_default.value.empty())
        all.diagnostics.push_back(
            {{all.private_file}, level, "no-default", "no DEFAULT_WRITE_DB in any file"});
    const strings classes = names_of(all.tables);
    for (const auto *defaults : {&all.propfiles, &all.testrigs})
        for (const auto &[name, value, where, extension] : *defaults)
            if (!classes.empty() && std::ranges::find(classes, name) == classes.end())
                all.diagnostics.push_back(
                    {where, std::min(WARNING, unless_rejected(all, name, "table")), "unknown-class",
                     "no TABLE has the class '" + name + "'" + did_you_mean(name, classes)});
    std::ranges::stable_sort(all.diagnostics, {},
                             [&](const diagnostic &fault) { return order(fault.where); });
}

configuration read_configuration(const vector<cfg_file> &files, const string &product)
{
    configuration all;
    all.product = product;
    all.is_whole = files[0].role == CFG_SHARED;
    read_files(all, files);
    finish(all);
    return all;
}
