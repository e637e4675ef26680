// Configuration files: what their statements do and what is reported about them.

#include "support/fixture.h"

#include <algorithm>
#include <regex>
#include <sstream>

// The report of a rejected statement.
static std::string bad(int line, const std::string &path = "t.cfg")
{
    return "> ERROR: Syntax error in line " + std::to_string(line) + " of cfg_file '" + path +
           "'\n";
}

class Reader : public TempDirTest {
  protected:
    // Check the result for a file, and the lines printed after the first one and, with a
    // rejected statement, before the last one.
    void expect(const std::string &text, int cfg_index, int result, const std::string &between,
                const std::string &path = "t.cfg")
    {
        write_file(path, text);
        EXPECT_EQ(vek_cfg_read(path.c_str(), cfg_index), result) << text;
        std::string last = "> ERROR: Erroneous statement(s) ignored in file : '" + path + "'.\n";
        EXPECT_EQ(drain_output(), "> " + reading(path) + "\n" + between + (result == 0 ? "" : last))
            << text;
    }
};

TEST_F(Reader, HandlesEachStatementAndReportsRejectedOnes)
{
    vek_private_cfg_index = 2;
    set_env("KLV_VEK_SEARCH", "YES");
    write_file("plain");
    make_dir(std::string("locked.vek") + probe_file);
    for (const Case &row : cases("statements")) {
        int cfg_index = 0, result = 0;
        std::string write_default;
        std::istringstream(row.head) >> cfg_index >> result >> write_default;
        expect(row.text, cfg_index, result, row.output);
        const char *found = vorn_vek_get_write_default();
        EXPECT_EQ(found == nullptr ? "none" : found, write_default) << row.text;
    }
    Lines found;
    for (const std::string &row : databases())
        found.push_back(row.substr(0, row.find(": damper 0")));
    EXPECT_EQ(found, (Lines{"one o 2", "two two dir 2", "three 3 2", "locked locked.vek 2",
                            "shared 5 0", "six 6 2", "seven 7 2", "eight 8 2"}));
}

TEST_F(Reader, RespectsItsLineLimitAndCountsLines)
{
    for (const Case &row : cases("line_limit"))
        for (const char *newline : {"\n", "\r\n"})
            for (const char *fill : {"x", " "}) {
                std::string text = std::regex_replace(row.text, std::regex("x"), fill);
                text = std::regex_replace(text, std::regex("\n"), newline);
                expect(text, 0, std::stoi(row.head), row.output);
            }
    expect(" \t\n\nX\n DATABASE", 0, 1, bad(4));
    expect("DATABASE\r\nDATABASE \r", 0, 1, bad(1) + bad(2));
    expect("X\rDATABASE\nDATABASE\rx\n", 0, 1, bad(2)); // white space like any other
    expect(repeat_x(2 * 267), 0, 1,
           "> ERROR: Syntax error in line 1 of cfg_file 't.cfg':\n"
           "> ERROR:   Line exceeds MAX number of characters 267\n");
    expect(std::string("DATABASE x\0 y\nDATABASE", 22), 0, 1, bad(1) + bad(2));
    expect("X\x1a\r\r\nDATABASE\r\r\n\x1a", 0, 1, bad(2)); // on every system
    expect(std::string(267, ' ') + "DATABASE\nDATABASE", 0, 1, bad(2) + bad(3));
    const std::string deep = std::string(120, 'd') + "/" + std::string(130, 'e') + "/t.cfg";
    expect("DATABASE", 0, 1, bad(1, deep), deep); // whole
    EXPECT_EQ(vek_cfg_read("$HOME/t.cfg", 0) + vek_cfg_read(".", 0), 2);
    const std::string closed = "> ERROR: Cannot open configuration file '";
    EXPECT_EQ(drain_output(), closed + "$HOME/t.cfg': No such file or directory\n" + closed +
                                  ".': " + directory_error + "\n");
}

TEST_F(Reader, ProcessesEnvironmentStatementsInTheirOwnPass)
{
    set_env("HOME", "/u");
    for (const Case &row : cases("environment"))
        for (const char *end : {"", "\n", "\r\n"}) {
            write_file("t.cfg", row.text.substr(0, row.text.size() - 1) + end);
            EXPECT_EQ(vek_env_read(Buffer("t.cfg")), std::stoi(row.head)) << row.text;
            EXPECT_EQ(drain_output(), row.output) << row.text;
        }
    vek_set_solver_mode(1);
    Buffer path("$HOME/none.cfg");
    EXPECT_EQ(vek_env_read(path), 1);
    EXPECT_EQ(std::string(path), "/u/none.cfg");
    EXPECT_EQ(host::printed()[0], "  Processing ENVIRONMENT entries in '$HOME/none.cfg'");
}
