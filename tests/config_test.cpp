// Configuration files: what their statements do and what is said about them.

#include "support/scratch.h"

class Reader : public Scratch {
  protected:
    Reader()
    {
        vek_private_cfg_index = 2;
    }
    // What the reader gives for t.cfg, and prints between its first line and,
    // after a bad statement, its last.
    void expect(const std::string &text, int cfg_index, int result, const Lines &between)
    {
        write_file("t.cfg", text);
        Lines lines = {reading("t.cfg")};
        lines.insert(lines.end(), between.begin(), between.end());
        if (result != 0)
            lines.push_back("ERROR: Erroneous statement(s) ignored in file : 't.cfg'.");
        EXPECT_EQ(vek_cfg_read("t.cfg", cfg_index), result) << text;
        EXPECT_EQ(host::printed(), lines) << text;
    }
    // What the pass over t.cfg sets and prints.
    void expect_set(const std::string &text, const Lines &settings, const Lines &lines = {},
                    int result = 0)
    {
        write_file("t.cfg", text);
        EXPECT_EQ(vek_env_read(Text("t.cfg")), result) << text;
        EXPECT_EQ(host::calls_of("vc_putenv"), settings) << text;
        EXPECT_EQ(host::printed(), lines) << text;
    }
};

// The report of a bad statement.
static std::string bad(int line, const std::string &reason = "", const std::string &path = "t.cfg")
{
    return "ERROR: Syntax error in line " + std::to_string(line) + " of cfg_file '" + path + "'" +
           (reason.empty() ? "" : ":\n    " + reason);
}

TEST_F(Reader, HandlesEachStatementAndReportsTheBadOnes)
{
    const std::string no_path = "database path does not exist.",
                      known = "database name already defined.";
    const std::string no_default = "cannot set database as writable default.";
    const std::string locked = "ERROR: The specified database name is not writable by the user.";
    const std::string same_table = "class or extension already defined.";
    const Lines advice = {"WARNING in line 1 of cfg_file 't.cfg':",
                          " SHARED_DB and PRIVATE_DB definitions have been",
                          " consolidated into DATABASE definitions.  Please",
                          " update your configuration files either by",
                          " directly editing them or choosing",
                          " \"save configuration\" from inside TAVIK/Vorn"};
    const auto with_advice = [&](const std::string &before, const std::string &after) {
        Lines lines = advice;
        if (!before.empty())
            lines.insert(lines.begin(), before);
        if (!after.empty())
            lines.push_back(after);
        return lines;
    };
    write_file("plain");
    make_dir(std::string("locked.vek") + probe_file);
    expect("", 2, 0, {});
    expect("! DATABASE\n  ! TABLE\n \t\n\nOTHER x\nENVIRONMENT A b\n", 2, 0, {});
    expect("TABLE a a.tbl ext ! why\n", 2, 1,
           {"ERROR: No valid DATABASE has been initialized before TABLE definition\n"
            "TABLE a a.tbl ext ",
            "ABORT: Fatal config file error", bad(1)});
    expect("dataBASE one o!ne\n\tDATABASE two two dir \t! c\n", 2, 0, {});
    expect("DATABASE\nDATABASE x\n", 2, 1, {bad(1), bad(2)});
    expect("DATABASE " + xs(31) + " x", 2, 4, {bad(1, "database alias name too long.")});
    expect("DATABASE shared x", 2, 6, {bad(1, "database name 'shared' is a reserved keyword.")});
    expect("DATABASE ONE x\nDATABASE x plain/x\n", 2, 2, {bad(1, known), bad(2, no_path)});
    expect("DATABASE x plain/x\nDATABASE one x\nDATABASE three 3\n", 2, 3,
           {bad(1, no_path), bad(2, known)});
    expect("SHARED_DB x plain/x\n", 2, 2, with_advice(bad(1, no_path), ""));
    expect("private_db x\n", 2, 1, with_advice("", bad(1)));
    expect("PRIVATE_DB locked locked.vek\n", 2, 0, with_advice(locked, ""));
    expect("SHARED_DB shared 5\n", 0, 0, advice);
    EXPECT_EQ(vorn_vek_get_write_default(), nullptr);
    expect("PRIVATE_DB six 6\nDATABASE seven 7\n", 2, 0, advice);
    EXPECT_STREQ(vorn_vek_get_write_default(), "six");
    expect("DEFAULT_WRITE_DB locked\n", 2, 1, {locked, bad(1, no_default), bad(1)});
    expect("DEFAULT_WRITE_DB\n", 2, 1, {bad(1, no_default), bad(1)});
    expect("DEFAULT_WRITE_DB Seven of them\n", 2, 0, {});
    expect("PRIVATE_DB eight 8\n", 2, 0, advice);
    EXPECT_STREQ(vorn_vek_get_write_default(), "Seven");
    expect("TABLE damper dampers.tbl\n", 2, 1, {bad(1)});
    expect("TABLE damper dampers.tbl dpr and more\n", 0, 0, {});
    expect("TABLE DAMPER x x\ntable x x DPR\n", 2, 2, {bad(1, same_table), bad(2, same_table)});
    expect("TABLE DAMPER x x\ntable x x DPR\n", 1, 0, {});
    set("KLV_VEK_SEARCH", "YES");
    expect(
        "DATABASE_ORDER two, one\n", 2, 0,
        {"INFO: line 1 of cfg_file 't.cfg':", "      DATABASE_ORDER entry has been discontinued.",
         "      Please remove the line from the file."});
    Lines found;
    for (const std::string &row : databases())
        found.push_back(row.substr(0, row.find(": damper 0")));
    EXPECT_EQ(found, (Lines{"one o 2", "two two dir 2", "three 3 2", "locked locked.vek 2",
                            "shared 5 0", "six 6 2", "seven 7 2", "eight 8 2"}));
}

TEST_F(Reader, KeepsToItsLineLimitAndCountsLines)
{
    // A line of that many characters that is reported unless it is too long.
    const auto wide = [](size_t count) { return "DATABASE" + std::string(count - 8, ' '); };
    const Lines first_and_second = {bad(1), bad(2)};
    const Lines too_long = {"ERROR: Syntax error in line 1 of cfg_file 't.cfg':",
                            "ERROR:   Line exceeds MAX number of characters 267", bad(2)};
    expect("\n\nX\n DATABASE", 0, 1, {bad(4)});
    expect("DATABASE\r\nDATABASE \r", 0, 1, first_and_second);
    expect(std::string("DATABASE x\0 y\nDATABASE", 22), 0, 1, first_and_second);
    expect(wide(266) + "!DATABASE\n", 0, 1, first_and_second);
    expect("!" + xs(266) + "DATABASE\n", 0, 1, {bad(2)});
    expect(std::string(267, ' ') + "DATABASE\nDATABASE", 0, 1, {bad(2), bad(3)});
    for (const char *end : {"\n", "\r\n"}) {
        expect(wide(266) + end + "DATABASE" + end, 0, 1, first_and_second);
        for (size_t count : {267, 268, 532, 534, 5000})
            expect(wide(count) + end + "DATABASE", 0, 1, too_long);
    }
    // A skipping read of exactly 267, line feed included, is not the last one.
    expect(wide(533) + "\nDATABASE 1\nDATABASE", 0, 1, too_long);
    const std::string deep = std::string(120, 'd') + "/" + std::string(130, 'e') + "/t.cfg";
    write_file(deep, "DATABASE");
    EXPECT_EQ(vek_cfg_read(deep.c_str(), 0), 1);
    EXPECT_EQ(host::printed()[1], bad(1, "", deep)); // whole
    EXPECT_EQ(vek_cfg_read("$HOME/t.cfg", 0) + vek_cfg_read(".", 0), 2);
    const std::string closed = "ERROR: Cannot open configuration file '";
    EXPECT_EQ(host::printed(), (Lines{closed + "$HOME/t.cfg': No such file or directory",
                                      closed + ".': Is a directory"}));
}

TEST_F(Reader, TakesEnvironmentStatementsInAPassOfTheirOwn)
{
    const auto refused = [](const std::string &why) {
        return Lines{bad(1, "   " + why), "ERROR: Statement ignored.  Continuing read of file..."};
    };
    expect_set("\nDATABASE a b\n! ENVIRONMENT A b\n", {});
    expect_set("Environment A  one $HOME\n", {"vc_putenv(A, one " + home + ")"});
    expect_set("ENVIRONMENT A b \t \t ! c\n", {"vc_putenv(A, b \t \t)"});
    expect_set("ENVIRONMENT A \"b  c \"\r\n", {"vc_putenv(A, b  c)"});
    expect_set("ENVIRONMENT A \"b\" ! c\n", {"vc_putenv(A, \"b\")"});
    expect_set("ENVIRONMENT A \"b!c\"\n", {"vc_putenv(A, \"b)"});
    expect_set("ENVIRONMENT A \"\n", {"vc_putenv(A, )"});
    expect_set("ENVIRONMENT A b\nENVIRONMENT C $A/d", {"vc_putenv(A, b)", "vc_putenv(C, b/d)"});
    expect_set("ENVIRONMENT A $NONE\n", {"vc_putenv(A, )"},
               {"WARNING: The following variable could not be found in the runtime environment:",
                "WARNING:   $NONE"});
    expect_set("ENVIRONMENT A fail\nENVIRONMENT A c\n", {"vc_putenv(A, fail)", "vc_putenv(A, c)"});
    expect_set("ENVIRONMENT A \nENVIRONMENT A b\nENVIRONMENT A fail",
               {"vc_putenv(A, b)", "vc_putenv(A, fail)"},
               refused("missing arguments for ENVIRONMENT entry."), 1);
    expect_set("ENVIRONMENT " + xs(60) + " " + xs(180),
               {"vc_putenv(" + xs(60) + ", " + xs(180) + ")"});
    expect_set("ENVIRONMENT " + xs(61) + " b", {},
               refused("environment variable name > 60 characters."));
    expect_set("ENVIRONMENT A " + xs(181), {},
               refused("environment variable value > 180 characters."));
    expect_set("!" + xs(254) + "ENVIRONMENT A b\n", {"vc_putenv(A, b)"}); // pieces of 255
    vek_set_solver_mode(1);
    Text path("$HOME/none.cfg");
    EXPECT_EQ(vek_env_read(path), 1);
    EXPECT_EQ(std::string(path), home + "/none.cfg");
    EXPECT_EQ(host::printed()[0], "  Processing ENVIRONMENT entries in '$HOME/none.cfg'");
}
