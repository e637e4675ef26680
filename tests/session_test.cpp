// A session: whose it is, which files it finds, and what a start makes of them.

#include "support/scratch.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

class Session : public Scratch {};

// What vek_chk_cfg_files gives: its result and the three paths.
static Lines chk_cfg_files(const std::string &name)
{
    Text shared(""), site("as before"), mine("as before");
    int result = vek_chk_cfg_files(name.c_str(), shared, site, mine);
    return {std::to_string(result), result == 0 ? +shared : "", +site, +mine};
}

TEST_F(Session, ItsNameAndModesAreSetOnce)
{
    EXPECT_STREQ(vek_product_name(), "");
    vek_set_product_name();
    set_product("skarn");
    EXPECT_STREQ(vek_product_name(), "vorn");
    EXPECT_EQ(vek_product_name_is("vorn") + 2 * vek_product_name_is("Vorn"), 1);
    vek_set_solver_mode(5);
    vek_set_solver_mode(0);
    EXPECT_EQ(vek_solver_mode(), 5);
    EXPECT_STREQ(vorn_vek_get_os(), "nt");
}

class EachProduct : public Scratch, public testing::WithParamInterface<Lines> {};

TEST_P(EachProduct, HasItsDisplayNameAndPrivateVariables)
{
    const std::string name = GetParam()[0], file = GetParam()[2], dir = GetParam()[3];
    for (const char *other : {"VORN", "BLTH", "BELTHAR", "TESMO"})
        set("KLV_" + std::string(other) + "_PRIVATE_CFG", "other");
    set_product(name);
    EXPECT_EQ(vek_product_name(), name.substr(0, 15));
    EXPECT_EQ(vek_product_string(), "TAVIK/" + GetParam()[1]);
    if (!file.empty())
        set("KLV_" + file + "_PRIVATE_CFG", "mine.cfg");
    set("KLV_" + dir + "_PRIVATE_DIR", "places");
    write_file("places/plug.cfg");
    EXPECT_EQ(chk_cfg_files("plug"),
              (Lines{"0", "places/plug.cfg", "", file.empty() ? home + "/.vorn.cfg" : "mine.cfg"}));
}

// The short name, the display name, and the words in the names of the private
// file variable, if there is one, and the private directory variable.
INSTANTIATE_TEST_SUITE_P(
    Table, EachProduct,
    testing::ValuesIn(rows("vorn=Vorn=VORN=VORN belthar=Belthar=BLTH=BLTH skarn=Skarn=SKRN=SKRN "
                           "dunmoren=Dunmoren=DUN=DUN quorvalind=Quorvalind=QRVL=QRVL "
                           "tesmo=Tesmo==TESMO glx=GLX==GLX Belthar=Vorn==BELTHAR "
                           "a23456789b1234567=Vorn==A23456789B12345")),
    [](const auto &row) { return row.param[0]; });

TEST_F(Session, TheFirstSharedFileThatExistsIsTaken)
{
    set_product("vorn");
    for (const Lines &row : rows("KLV_PLUG=own KLV_VORN=own KLV_VORN_PRIVATE_DIR=mine topdir=inst- "
                                 "KLV_USER_PLUGIN_DIR=;;first;;second; KLV_VORN_SITE=site"))
        set(row[0], row[1]);
    for (const char *dir : {".", "mine", "first", "site"}) // none of them is for the product
        write_file(dir + std::string("/vorn.cfg"));
    for (const auto &[name, places] :
         {std::pair("plug", "own/plug.cfg ./plug.cfg mine/plug/plug.cfg mine/plug.cfg "
                            "first/plug/plug.cfg first/plug.cfg second/plug/plug.cfg "
                            "second/plug.cfg site/plug/plug.cfg site/plug.cfg inst-plug/plug.cfg"),
          {"vorn", "own/vorn.cfg inst-vorn/vorn.cfg"},
          {"Vorn", "own/Vorn.cfg inst-Vorn/Vorn.cfg"}}) {
        for (const Lines &place : rows(places))
            write_file(place[0]);
        for (const Lines &place : rows(places)) {
            EXPECT_EQ(chk_cfg_files(name)[1], place[0]);
            std::filesystem::remove(place[0]);
        }
        EXPECT_EQ(chk_cfg_files(name), (Lines{"2", "", "as before", "as before"}));
    }
    write_file("plug/plug.cfg"); // would be that of an empty topdir
    unsetenv("topdir");
    EXPECT_EQ(chk_cfg_files("plug")[0], "2");
    EXPECT_EQ(host::printed(), Lines{});
    vek_set_interface_mode();
    EXPECT_EQ(chk_cfg_files("plug")[0], "1");
    EXPECT_EQ(host::printed(),
              (Lines{"ERROR: Cannot create the VEK database configuration.",
                     "ERROR:  Shared cfg file plug.cfg not found",
                     "ERROR:  And is required to continue.", "ERROR: Check your installation!"}));
}

TEST_F(Session, FindsTheSiteFileAndMakesThePrivateOne)
{
    const std::string mine = home + "/.vorn.cfg", dir(200, 'd');
    make_dir(dir);
    set_product("vorn");
    write_file("plug.cfg");
    write_file("site/vorn.cfg");
    set("KLV_VORN_SITE", "site"); // that of another name
    EXPECT_EQ(chk_cfg_files("plug"), (Lines{"0", "./plug.cfg", "", mine}));
    EXPECT_TRUE(std::filesystem::is_regular_file(mine));
    set("KLV_PLUG_SITE", "");
    EXPECT_EQ(chk_cfg_files("plug")[2], "");
    set("KLV_PLUG_SITE", "site");
    EXPECT_EQ(chk_cfg_files("plug")[2], "");
    write_file("site/plug.cfg");
    EXPECT_EQ(chk_cfg_files("plug"), (Lines{"0", "./plug.cfg", "site/plug.cfg", mine}));
    EXPECT_EQ(host::printed(), Lines{});
    for (const Lines &bad : rows("none/x.cfg " + dir + "/[66] [5000] =")) {
        set("KLV_VORN_PRIVATE_CFG", bad[0]);
        EXPECT_EQ(chk_cfg_files("plug")[0], "1") << bad[0];
        EXPECT_EQ(host::printed().back(),
                  "ERROR: Cannot create private configuration file " + bad[0]);
    }
    set("KLV_VORN_PRIVATE_CFG", dir + "/" + xs(65));
    EXPECT_EQ(chk_cfg_files("plug")[3], dir + "/" + xs(65));
    unsetenv("KLV_VORN_PRIVATE_CFG");
    set("HOME", "");
    EXPECT_EQ(chk_cfg_files("plug")[3], "./.vorn.cfg");
    unsetenv("HOME");
    EXPECT_EQ(chk_cfg_files("plug")[3], "./.vorn.cfg");
    EXPECT_EQ(host::printed(), (Lines{"WARNING: Environment variable HOME is not set; private cfg "
                                      "file ./.vorn.cfg is used."}));
    for (size_t length : {267, 266}) { // of a path, which may have 266
        const std::string deep = dir + "/" + xs(length - 210);
        write_file(deep + "/plug.cfg");
        set("KLV_PLUG", deep);
        set("KLV_PLUG_SITE", deep);
        const Lines found = chk_cfg_files("plug");
        EXPECT_EQ(found[1], length == 266 ? deep + "/plug.cfg" : "./plug.cfg");
        EXPECT_EQ(found[2], length == 266 ? deep + "/plug.cfg" : "");
    }
}

static const std::string problem = "WARNING: Possible syntax problem in the configuration file(s).";
static const std::string go_on = "WARNING: Continuing initialization of VEK Databases...";

TEST_F(Session, GrowsWithEachStart)
{
    const std::string mine = home + "/.vorn.cfg";
    set("KLV_VORN_SITE", "site");
    set("KLV_PLUG_SITE", "site");
    write_file("site/vorn.cfg", "TABLE tyre tyres.tbl tir\n");
    write_file("plug.cfg", "ENVIRONMENT PLACE plug.vek\nDATABASE plug $PLACE\n"
                           "TABLE road roads.tbl rdf\n");
    write_file("site/plug.cfg", "TABLE wheel wheels.tbl whl\nTABLE tyre again.tbl tir\n");
    write_file("third.cfg", "ENVIRONMENT A fail\nTABLE third third.tbl thd\n");
    EXPECT_EQ(start_session(shared_cfg, private_cfg + "TABLE mine mine.tbl min\n"), 0);
    EXPECT_EQ(host::printed(),
              (Lines{reading("inst/vorn.cfg"), reading("site/vorn.cfg"), reading(mine)}));
    EXPECT_EQ(vorn_vek_init("plug"), 0);
    EXPECT_EQ(host::calls[0], "vc_putenv(PLACE, plug.vek)");
    EXPECT_EQ(host::printed(), (Lines{reading("./plug.cfg"), reading("site/plug.cfg")}));
    EXPECT_EQ(vorn_vek_init("third"), 0);
    EXPECT_EQ(host::printed(), (Lines{reading("./third.cfg"), problem, go_on}));
    EXPECT_EQ(vek_private_cfg_index, 2);
    const std::string tables = ": damper 0, spring 0, tyre 1, mine 2, road 3, wheel 4, third 5";
    EXPECT_EQ(databases(),
              (Lines{"vorn_shared shared.vek 0" + tables,
                     "private " + home + "/private.vek 2" + tables, "plug plug.vek 3" + tables}));
    EXPECT_EQ(listing("shared.vek"), (Lines{"dampers.tbl", "springs.tbl"}));
    EXPECT_EQ(listing("plug.vek"), Lines{});
    EXPECT_EQ(listing("private.vek"), (Lines{"dampers.tbl", "mine.tbl", "roads.tbl", "springs.tbl",
                                             "third.tbl", "tyres.tbl", "wheels.tbl"}));
    // Warnings name the file of a table, not the one that now has its slot.
    EXPECT_EQ(Lines(vek_cfg_files, vek_cfg_files + 3),
              (Lines{"./third.cfg", "site/plug.cfg", mine}));
    const Lines files = {"inst/vorn.cfg", mine, "site/plug.cfg"},
                dirs = {"dampers", "mine", "wheels"};
    for (const std::string &dir : dirs) {
        std::filesystem::remove("private.vek/" + dir + ".tbl");
        write_file("private.vek/" + dir + ".tbl");
    }
    EXPECT_EQ(vek_upd_vek_tbls(-2), 1);
    const Lines warnings = host::printed();
    for (size_t i = 0; i < 3; ++i)
        EXPECT_EQ(warnings.at(3 * i + 2),
                  "WARNING:   defined in the configuration file " + files[i] + ".");
}

TEST_F(Session, AStartWithoutSharedFileIsNone)
{
    set_product("vorn");
    EXPECT_EQ(vorn_vek_init("none") + vorn_vek_init("vorn"), 0);
    EXPECT_EQ(host::printed(), Lines{""});
    EXPECT_EQ(vorn_vek_get_number_of_veks(), 0);
    // The first start that finds its files need not be the product's.
    write_file("plug.cfg", shared_cfg + "ENVIRONMENT A b\n");
    vek_set_solver_mode(1);
    EXPECT_EQ(vorn_vek_init("plug"), 0);
    EXPECT_EQ(host::calls_of("vc_putenv"), Lines{});
    EXPECT_EQ(host::printed(), (Lines{"", reading("./plug.cfg"), reading(home + "/.vorn.cfg")}));
    EXPECT_EQ(vek_private_cfg_index, 1);
    vek_set_interface_mode();
    EXPECT_EQ(vorn_vek_init("none"), -1);
    EXPECT_EQ(host::printed().back(), "ABORT: fatal configuration file error");
}

TEST_F(Session, TheFirstStartComparesTheNumbersOfTables)
{
    host::when_print = [](const char *line) {
        if (line != reading("inst/vorn.cfg")) // but that of the private file
            vek_tbl_add(1, "extra", "extra.tbl", "xtr", 0);
    };
    EXPECT_EQ(start_session(shared_cfg + "DATABASE other other.vek\n", private_cfg), 1);
    EXPECT_EQ(host::printed().back(),
              "ERROR: Number of tables in vek 'vorn_shared' and 'other' differ. Aborting...");
    write_file("plug.cfg");
    EXPECT_EQ(vorn_vek_init("plug"), 0);
}

struct Outcome {
    std::string name, shared, mine;
    int solver_mode, result;
    Lines reports; // behind the reading of the private file
};
class AStart : public Scratch, public testing::WithParamInterface<Outcome> {};

TEST_P(AStart, TestsItsOutcome)
{
    const auto &[name, shared, mine, solver_mode, result, reports] = GetParam();
    const std::string path = home + "/.vorn.cfg";
    const std::string no_default =
        "No default writable database exists; ensure a valid \nDEFAULT_WRITE_DB definition "
        "exists in your private config file\n'" +
        path + "'";
    vek_set_solver_mode(solver_mode);
    EXPECT_EQ(start_session(shared, mine), result);
    EXPECT_EQ(host::calls_of("vc_alert"),
              result == -1 ? Lines{"vc_alert(error, " + no_default + ", , Exit The Session, , 2)"}
                           : Lines{});
    Lines lines = host::printed(), expected = reports;
    if (result == -1)
        expected.push_back("ABORT: " + no_default);
    lines.erase(lines.begin(), std::find(lines.begin(), lines.end(), reading(path)) + 1);
    EXPECT_EQ(lines, expected);
}

static const Lines no_tables = {"ERROR: No tables in vek 'a'. Aborting...",
                                "ERROR: No tables in vek 'b'. Aborting..."};
static const std::string none = "ERROR: No vek's initialized. Aborting...";

static const Lines blocked = {
    "WARNING: VEK <a> is write-protected and cannot be updated to contain the",
    "WARNING:   table directory a/no/x.tbl",
    "WARNING:   defined in the configuration file inst/vorn.cfg.", problem, go_on};
static const std::string one_db = "DATABASE a a\n";

INSTANTIATE_TEST_SUITE_P(
    Table, AStart,
    testing::Values(
        Outcome{"BadStatement", shared_cfg + "TABLE\n", private_cfg, 0, 0, {problem, go_on}},
        Outcome{"NoTableDirectory", one_db + "TABLE x no/x.tbl x\n", "DEFAULT_WRITE_DB a\n", 0, 0,
                blocked},
        Outcome{"NoDatabase", "", "", 0, -1, {none}},
        Outcome{"NoDatabaseForTheSolver", "TABLE\n", "", 1, 1, {problem, go_on, none}},
        Outcome{"NoTables", one_db + "DATABASE b b\n", "DEFAULT_WRITE_DB b\n", 0, 1, no_tables},
        Outcome{"NoDefault", shared_cfg, "", 0, -1, {}},
        Outcome{"NoDefaultForTheSolver", shared_cfg, "", 1, 0, {}}),
    [](const auto &outcome) { return outcome.param.name; });
