// The solver's search, which starts the library itself.

#include "support/fixture.h"

#include <regex>

class Solver : public TempDirTest {
  protected:
    Solver()
    {
        write_file(".vorn.cfg", private_cfg);
        write_file("private.vek/dampers.tbl/x.dpr");
        write_file("here.dpr");
        set_env("HOME", ".");
        set_env("KLV_VORN", ".");
    }
    // Check what F2C_DB_SEARCH returns for a name, and prints.
    void expect(const std::string &name, int found, const std::string &text,
                const Lines &lines = {})
    {
        Buffer result("");
        int length = -1, is_found = -1;
        F2C_DB_SEARCH(result, -1, &length, &is_found, name.c_str(), -1, "damper  x");
        EXPECT_EQ(std::string(result), text) << name;
        EXPECT_EQ(length, static_cast<int>(text.size())) << name;
        EXPECT_EQ(is_found, found) << name;
        EXPECT_EQ(host::printed(), lines) << name;
    }
};

TEST_F(Solver, StartsThePlugInsOfTheModelEvenIfOneFails)
{
    const std::string n39 = repeat_x(39), path = "./private.vek/dampers.tbl/x.dpr";
    write_file("vorn.cfg");
    write_file(n39 + ".cfg", shared_cfg);
    host::plugin_list = "vorn::" + n39 + ":" + n39 + "n:none:";
    expect("<private>\\dampers.tbl\\x.dpr  ", 1, path,
           {"", reading("./vorn.cfg"), reading("./.vorn.cfg"),
            "ERROR: No tables in vek 'private'. Aborting...",
            "ERROR: VEK database was not initialized properly for 'vorn' plugin...",
            reading("./" + n39 + ".cfg"),
            "WARNING: Plugin name '" + n39 + "n' must be less than 40 chars, skipping...", ""});
    Buffer none("<private>\\none");
    EXPECT_STREQ(db_search(none, "damper", nullptr), "");
    EXPECT_STREQ(none, "<private>/none");
    set_env("KLV_VEK_SEARCH", "yes");
    expect("x", 1, path);
}

class FirstSearch : public Solver, public testing::WithParamInterface<Lines> {};

TEST_P(FirstSearch, StartsTheLibraryOnce)
{
    const Lines &row = GetParam();
    for (const char *file : {"end.cfg", "endx.cfg", "plug.cfg", "VORN.cfg"})
        write_file(file, shared_cfg);
    if (!row[1].empty())
        set_env("KLV_PRODUCT_NAME", row[1]);
    if (row[2] != "-")
        host::plugin_list = row[2];
    set_env("QNS_PRODUCT_NAME", "ZAPT");
    expect("none", 1, "none");
    unset("QNS_PRODUCT_NAME");
    Lines lines(row.begin() + 3, row.end());
    lines[0] = "";
    lines.push_back("");
    expect("none", 0, row[3], lines);
    expect("none", 0, row[3]);
    vek_set_interface_mode();
    expect("none", 0, "");
}

INSTANTIATE_TEST_SUITE_P(Table, FirstSearch, testing::ValuesIn(table("solver_set_ups")),
                         [](const auto &row) { return row.param[0]; });

TEST_F(Solver, WithoutDatabasesTestsPlainPaths)
{
    expect("none", 0, "none", {"", ""});
    for (const Lines &row :
         rows("<only=<only a>b=a>b a\\b=a\\b [267]=[267] [268]=[266] [10000]=[266] ="))
        expect(row[0], 0, row[1]);
    expect("none at all", 0, "none");
    expect(std::string(10000, ' '), 0, "");
    expect("here.dpr" + std::string(9992, ' '), 1, "here.dpr");
    for (const char *name : {"<a>/x", "a>b<c", "x/klvds://y"})
        expect(name, 0, name,
               {"ERROR: Open for file '" + std::string(name) + "' failed:",
                "ERROR: VEK database not initialized properly...\n"});
    Buffer name("none");
    set_env("QNS_PRODUCT_NAME", "ZAPT2");
    EXPECT_EQ(db_search(name, "", nullptr), +name);
    int found = 7; // the only result requested
    F2C_DB_SEARCH(nullptr, 0, nullptr, &found, "here.dpr", 0, "");
    EXPECT_EQ(found, 1);
}

TEST(Build, IsIdentifiedBeforeAnyStart)
{
    testing::internal::CaptureStdout();
    const char *release = vek_build_version();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    testing::internal::CaptureStdout();
    const char *version = vek_version();
    std::string text = testing::internal::GetCapturedStdout();
    EXPECT_NE(version, release);
    EXPECT_STREQ(version, release);
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(
        text, parts,
        std::regex("\n\nQNS C       opts: \\((-.*)\\)\nQNS C\\+\\+     opts: \\((-.*)\\)\n"
                   "QNS Fortran opts: \\(\\)\nQNS Utility  lib: vek\nQNS Compile   os: (\\S+ .+)\n"
                   "QNS Compile date: (\\d{4})-(\\d\\d)-(\\d\\d) (\\d\\d):(\\d\\d):\\d\\d\n"
                   "QNS Compile  ver: (\\d{8}\\.\\d{4})\n"
                   "QNS Release  ver: (\\d{4}\\.\\d+\\.\\d+-CL\\d+)\n")))
        << text;
    EXPECT_EQ(parts[4].str() + parts[5].str() + parts[6].str() + "." + parts[7].str() +
                  parts[8].str(),
              parts[9]);
    EXPECT_EQ(parts[10], release);
    EXPECT_EQ(host::calls, Lines{});
}
