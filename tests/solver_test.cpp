// The solver's search, which starts the library itself.

#include "support/scratch.h"

#include <cstdlib>

class Solver : public Scratch {
  protected:
    Solver()
    {
        write_file(".vorn.cfg", private_cfg);
        write_file("private.vek/dampers.tbl/x.dpr");
        write_file("here.dpr");
        set("KLV_VORN", home);
    }
    // What F2C_DB_SEARCH gives for a name, and prints.
    void expect(const std::string &name, int found, const std::string &text,
                const Lines &lines = {})
    {
        Text result("");
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
    const std::string name39(39, 'n'), path = home + "/private.vek/dampers.tbl/x.dpr";
    write_file("vorn.cfg", shared_cfg);
    write_file(".vorn.cfg", "DATABASE private $HOME/private.vek\n"); // no default
    write_file(name39 + ".cfg");
    host::plugin_list = "vorn::" + name39 + ":" + name39 + "n:none:";
    int found = -1;
    Text name("<private>\\dampers.tbl\\x.dpr");
    char *block = db_search(name, "damper", &found);
    EXPECT_EQ(block, path);
    EXPECT_EQ(found, 1);
    free(block);
    EXPECT_STREQ(name, "<private>/dampers.tbl/x.dpr");
    const Lines calls(host::calls.begin(), host::calls.begin() + 7);
    EXPECT_EQ(calls,
              (Lines{"vc_str_print()", "ac_tavik_root()", "ac_lookup_begin(70, 4)",
                     "ac_lookup_object(0)", "ac_lookup_done()",
                     "ac_lookup_by_name(71, 66, plugin_list)", "ac_get_string(72, 518, 0)"}));
    Lines lines = host::printed();
    std::erase_if(lines, [](const std::string &line) { return line.starts_with("ABORT"); });
    const auto failed = [](const std::string &start) {
        return "ERROR: VEK database was not initialized properly for '" + start + "' plugin...";
    };
    EXPECT_EQ(lines, (Lines{"", reading(home + "/vorn.cfg"), reading(home + "/.vorn.cfg"),
                            failed("vorn"), reading("./" + name39 + ".cfg"), failed(name39),
                            "WARNING: Plugin name '" + name39 +
                                "n' must be less than 40 chars, skipping...",
                            ""}));
    expect("<private>/dampers.tbl/x.dpr   ", 1, path);
    expect("<private>/dampers.tbl/none", 0, "");
    set("KLV_VEK_SEARCH", "yes");
    expect("x", 1, path);
}

struct SetUp {
    std::string name, product;
    std::optional<std::string> plugin_list;
    bool databases, warned, started;
};
class ASetUp : public Solver, public testing::WithParamInterface<SetUp> {};

TEST_P(ASetUp, RunsOnce)
{
    const auto &[name, product, plugin_list, databases, warned, started] = GetParam();
    const std::string start = plugin_list ? "./end.cfg" : home + "/" + product + ".cfg";
    for (const char *file : {"end.cfg", "endx.cfg", "plug.cfg", "VORN.cfg"})
        write_file(file, shared_cfg);
    if (!product.empty())
        set("KLV_PRODUCT_NAME", product);
    host::plugin_list = plugin_list;
    set("QNS_PRODUCT_NAME", "ZAPT");
    expect("none", 1, "none");
    unsetenv("QNS_PRODUCT_NAME");
    Lines lines = {""};
    if (warned)
        lines.push_back(
            plugin_list
                ? "WARNING: Model string 'plugin_list' is longer than 1023 chars, rest ignored."
                : "ERROR: Solver string 'plugin_list' not found, tvm may not be compatible with "
                  "current release");
    if (started && plugin_list)
        lines.push_back(""); // a first start that is not the product's
    if (started)
        lines.insert(lines.end(), {reading(start), reading(home + "/.vorn.cfg")});
    lines.push_back("");
    expect("none", 0, databases ? "" : "none", lines);
    expect("none", 0, databases ? "" : "none");
    vek_set_interface_mode();
    expect("none", 0, "");
}

INSTANTIATE_TEST_SUITE_P(
    Table, ASetUp,
    testing::Values(SetUp{"EmptyList", "", "", true, false, false},
                    SetUp{"LongestList", "", std::string(1020, ':') + "end", true, false, true},
                    SetUp{"CutInAName", "", std::string(1020, ':') + "endx", true, true, false},
                    SetUp{"CutBehindAName", "", std::string(1020, ':') + "end:plug", true, true,
                          true},
                    SetUp{"VeryLongList", "", "end:" + xs(5000), true, true, true},
                    SetUp{"OldModel", "VORN", std::nullopt, true, true, true},
                    SetUp{"OldModelOfNoProduct", "tesmo", std::nullopt, false, false, false},
                    SetUp{"OldModelWithoutProduct", "", std::nullopt, false, false, false}),
    [](const auto &set_up) { return set_up.param.name; });

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
    Text name("none");
    int found = -1;
    EXPECT_EQ(db_search(name, "", &found), +name);
}
