// vek_script FILE [CASE] - run the cases of a script, or those whose title contains CASE.
//
// Each case runs in a directory of its own, and each part of it that "-- process" ends in a
// process of its own.  The process writes down what it does in the form of the script, and
// the case passes if that is the script.

#include "script.h"
#include "support/system.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

static void prepare_process(const std::string &home)
{
    for (const std::string &variable : variables())
        if (variable.starts_with("KLV_") || variable.starts_with("QNS_") ||
            variable.starts_with("topdir="))
            unset(variable.substr(0, variable.find('=')));
    fs::current_path(home_dir = home);
    set_variable("HOME", home);
    set_variable(on_windows ? "TMP" : "TMPDIR", home + "-tmp");
    set_alarm(180);
}

// In the process of one part: writes what it does to HOME-tmp/made.
static int run_part(const Script &script, size_t nth, size_t part, const std::string &home)
{
    prepare_process(home);
    const Lines lines = expected_lines(script, parts_of(script.cases.at(nth).lines).at(part));
    const Lines made = run_lines(script, lines);
    std::ofstream file(home + "-tmp/made", std::ios::binary);
    for (const std::string &line : made)
        file << line << "\n";
    return 0;
}

// Runs a case and returns what happened.
static Lines run_case(const std::string &program, const std::string &path, const Script &script,
                      size_t nth)
{
    const std::string home = make_temp_dir();
    Lines all;
    const size_t count = parts_of(script.cases[nth].lines).size();
    for (size_t part = 0; part < count; ++part) {
        if (part > 0)
            all.push_back("-- process");
        fs::remove_all(home + "-tmp");
        fs::create_directory(home + "-tmp");
        const int status =
            run_program({program, "--part", path, std::to_string(nth), std::to_string(part), home});
        for (const std::string &line : lines_of(read_file(home + "-tmp/made")))
            all.push_back(line);
        if (status != 0)
            all.push_back("the process ended with status " + std::to_string(status));
    }
    std::error_code ignored; // some paths are too long for the system
    fs::permissions(home, fs::perms::all, ignored);
    fs::remove_all(home, ignored);
    fs::remove_all(home + "-tmp", ignored);
    return all;
}

static void print_difference(const Lines &expected, const Lines &made)
{
    size_t first = 0;
    while (first < std::min(expected.size(), made.size()) && expected[first] == made[first])
        ++first;
    for (size_t i = first < 2 ? 0 : first - 2; i < expected.size(); ++i)
        printf("  %c %s\n", i < first ? ' ' : '-', expected[i].c_str());
    for (size_t i = first; i < made.size(); ++i)
        printf("  + %s\n", made[i].c_str());
}

// The tags of a title, "[posix]", "[windows]" and "[root]", say where its case runs.
static bool runs_here(const std::string &title)
{
    return title.find(on_windows ? "[posix]" : "[windows]") == title.npos &&
           (title.find("[root]") == title.npos || is_root());
}

int main(int count, char **arguments)
{
    Lines words(arguments, arguments + count);
    const bool is_part = count == 6 && words[1] == "--part";
    if (is_part)
        words.erase(words.begin() + 1);
    if (words.size() < 2)
        return fprintf(stderr, "usage: vek_script FILE [CASE]\n"), 2;
    Script script;
    read_script(fs::path(words[1]).replace_filename("common.txt").string(), script);
    read_script(words[1], script);
    if (is_part)
        return run_part(script, std::stoul(words[2]), std::stoul(words[3]), words[4]);

    size_t ran = 0, different = 0;
    for (size_t nth = 0; nth < script.cases.size(); ++nth) {
        const Case &test = script.cases[nth];
        if (!runs_here(test.title) ||
            (words.size() > 2 && test.title.find(words[2]) == test.title.npos))
            continue;
        ++ran;
        const Lines expected = expected_lines(script, test.lines);
        const Lines made = run_case(words[0], words[1], script, nth);
        if (made == expected)
            continue;
        ++different;
        printf("%s:%zu: %s\n", words[1].c_str(), test.line, test.title.c_str());
        print_difference(expected, made);
    }
    printf("%zu cases, %zu differ\n", ran, different);
    return (ran == 0 && words.size() > 2) || different > 0;
}
