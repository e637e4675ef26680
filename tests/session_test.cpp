// A session: its product, the files it finds, and what a start makes of them.

#include "support/fixture.h"

#include <algorithm>
#include <filesystem>

class Session : public TempDirTest {};

// The result of vek_chk_cfg_files and the three paths.
static Lines chk_cfg_files(const std::string &name)
{
    Buffer shared(""), site("as before"), mine("as before");
    int result = vek_chk_cfg_files(name.c_str(), shared, site, mine);
    return {std::to_string(result), result == 0 ? +shared : "", +site, +mine};
}

class EachProduct : public Session, public testing::WithParamInterface<Lines> {};

TEST_P(EachProduct, HasItsNamesAndPrivateVariables)
{
    const Lines &row = GetParam();
    for (const char *other : {"VORN", "BLTH", "BELTHAR", "TESMO"})
        set_env("KLV_" + std::string(other) + "_PRIVATE_CFG", "other");
    set_env("HOME", "");
    EXPECT_STREQ(vek_product_name(), "");
    set_product(row[0]);
    set_product("skarn"); // too late to count
    EXPECT_EQ(vek_product_name(), row[1]);
    EXPECT_EQ(vek_product_string(), row[2]);
    set_env(row[3], "mine.cfg");
    set_env(row[4], "places");
    write_file("places/plug.cfg");
    EXPECT_EQ(chk_cfg_files("plug"), (Lines{"0", "places/plug.cfg", "", row[5]}));
}

INSTANTIATE_TEST_SUITE_P(Table, EachProduct, testing::ValuesIn(table("products")),
                         [](const auto &row) { return row.param[0]; });

TEST_F(Session, TheFirstSharedFileThatExistsIsUsed)
{
    set_product("vorn");
    for (const Lines &row : rows("KLV_PLUG=own KLV_VORN=own KLV_VORN_PRIVATE_DIR=mine topdir=inst- "
                                 "KLV_USER_PLUGIN_DIR=;;first;;second; KLV_VORN_SITE=site"))
        set_env(row[0], row[1]);
    for (const Lines &row : rows("Vorn.cfg vorn.cfg mine/vorn.cfg first/Vorn.cfg site/vorn.cfg"))
        write_file(row[0]); // not for the product
    const std::vector<Lines> files = table("shared_files");
    for (const Lines &row : files)
        write_file(row[1]);
    for (const Lines &row : files) {
        if (on_windows && row[0] == "Vorn")
            continue; // the same files there
        EXPECT_EQ(chk_cfg_files(row[0])[1], row[1]);
        std::filesystem::remove(row[1]);
    }
    EXPECT_EQ(chk_cfg_files("plug"), (Lines{"2", "", "as before", "as before"}));
    write_file("plug/plug.cfg"); // would be found with an empty topdir
    unset("topdir");
    vek_set_interface_mode();
    EXPECT_EQ(chk_cfg_files("plug")[0], "1");
    EXPECT_EQ(host::printed(),
              (Lines{"ERROR: Cannot create the VEK database configuration.",
                     "ERROR:  Shared cfg file plug.cfg not found",
                     "ERROR:  And is required to continue.", "ERROR: Check your installation!"}));
}

TEST_F(Session, FindsTheSiteFileAndCreatesThePrivateOne)
{
    const std::string mine = home + "/.vorn.cfg", dir(200, 'd');
    make_dir(dir);
    set_product("vorn");
    write_file("plug.cfg");
    write_file("site/vorn.cfg");
    set_env("KLV_VORN_SITE", "site"); // of another name
    EXPECT_EQ(chk_cfg_files("plug"), (Lines{"0", "./plug.cfg", "", mine}));
    EXPECT_TRUE(std::filesystem::is_regular_file(mine));
    for (const char *site : {"", "site"}) {
        set_env("KLV_PLUG_SITE", site);
        EXPECT_EQ(chk_cfg_files("plug")[2], "");
    }
    write_file("site/plug.cfg");
    EXPECT_EQ(chk_cfg_files("plug"), (Lines{"0", "./plug.cfg", "site/plug.cfg", mine}));
    for (const Lines &bad : rows("none/x.cfg " + dir + "/[66] [5000] =")) {
        if (on_windows && bad[0].empty())
            continue; // unset there
        set_env("KLV_VORN_PRIVATE_CFG", bad[0]);
        EXPECT_EQ(chk_cfg_files("plug")[0], "1") << bad[0];
        EXPECT_EQ(host::printed().back(),
                  "ERROR: Cannot create private configuration file " + bad[0]);
    }
    set_env("KLV_VORN_PRIVATE_CFG", dir + "/" + repeat_x(65));
    EXPECT_EQ(chk_cfg_files("plug")[3], dir + "/" + repeat_x(65));
    unset("KLV_VORN_PRIVATE_CFG");
    unset("HOME");
    EXPECT_EQ(chk_cfg_files("plug")[3], "./.vorn.cfg");
    for (size_t length : {267u, 266u}) { // of a path; 266 is the limit
        const std::string deep = dir + "/" + repeat_x(length - 210);
        write_file(deep + "/plug.cfg");
        set_env("KLV_PLUG", deep);
        set_env("KLV_PLUG_SITE", deep);
        const Lines found = chk_cfg_files("plug");
        EXPECT_EQ(found[1], length == 266 ? deep + "/plug.cfg" : "./plug.cfg");
        EXPECT_EQ(found[2], length == 266 ? deep + "/plug.cfg" : "");
    }
    EXPECT_EQ(host::printed(), (Lines{"WARNING: Environment variable HOME is not set; private cfg "
                                      "file ./.vorn.cfg is used."}));
}

TEST_F(Session, GrowsWithEachStart)
{
    const std::string mine = home + "/.vorn.cfg";
    set_env("KLV_VORN_SITE", "site");
    set_env("KLV_PLUG_SITE", "site");
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
    EXPECT_EQ(host::printed().size(), 3U); // two warnings
    const std::string tables = ": damper 0, spring 0, tyre 1, mine 2, road 3, wheel 4, third 5";
    EXPECT_EQ(databases(),
              (Lines{"vorn_shared shared.vek 0" + tables,
                     "private " + home + "/private.vek 2" + tables, "plug plug.vek 3" + tables}));
    EXPECT_EQ(listing("shared.vek"), (Lines{"dampers.tbl", "springs.tbl"}));
    EXPECT_EQ(listing("plug.vek"), Lines{});
    EXPECT_EQ(listing("private.vek"), (Lines{"dampers.tbl", "mine.tbl", "roads.tbl", "springs.tbl",
                                             "third.tbl", "tyres.tbl", "wheels.tbl"}));
    // Warnings name the file that defined the table, not the one that now has its slot.
    std::filesystem::remove_all("private.vek");
    write_file("private.vek");
    EXPECT_EQ(vek_upd_vek_tbls(-2), 1);
    Lines files = {"inst/vorn.cfg", "inst/vorn.cfg", "site/vorn.cfg", mine,
                   "./plug.cfg",    "site/plug.cfg", "./third.cfg"},
          warnings = host::printed();
    for (size_t i = 0; i < files.size(); ++i)
        EXPECT_EQ(warnings.at(3 * i + 2),
                  "WARNING:   defined in the configuration file " + files[i] + ".");
}

TEST_F(Session, AStartWithoutSharedFileHasNoEffect)
{
    vek_set_product_name(); // "vorn" without the variable
    EXPECT_EQ(vorn_vek_init("none") + vorn_vek_init("vorn"), 0);
    EXPECT_EQ(host::printed(), Lines{""});
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
    EXPECT_STREQ(vorn_vek_get_os(), "nt");
}

TEST_F(Session, TheFirstStartComparesTheNumbersOfTables)
{
    host::when_print = [](const char *) {
        if (names() == "vorn_shared other private") // those of plug-ins are not compared
            add_database("plug plug.vek", 3);
        vek_tbl_add(1, "extra", "extra.tbl", "xtr", 0);
    };
    EXPECT_EQ(start_session(shared_cfg + "DATABASE other other.vek\n", private_cfg), 1);
    EXPECT_EQ(host::printed().back(),
              "ERROR: Number of tables in vek 'vorn_shared' and 'other' differ. Aborting...");
    write_file("plug.cfg");
    EXPECT_EQ(vorn_vek_init("plug"), 0);
}

class AStart : public Session, public testing::WithParamInterface<Lines> {};

TEST_P(AStart, TestsItsOutcome)
{
    const Lines &row = GetParam();
    set_env("HOME", ".");
    std::string shared = row[3];
    std::replace(shared.begin(), shared.end(), ';', '\n');
    const int mode = std::stoi(row[1]);
    vek_set_solver_mode(mode);
    vek_set_solver_mode(1 - mode); // too late to count
    EXPECT_EQ(start_session(shared, row[4]), std::stoi(row[2]));
    Lines got = host::calls_of("vc_alert"), expected(row.begin() + 5, row.end());
    const Lines printed = host::printed();
    got.insert(got.end(), std::find(printed.begin(), printed.end(), row[5]), printed.end());
    if (row[2] == "-1") {
        const std::string no_default = "No default writable database exists; ensure a valid \n"
                                       "DEFAULT_WRITE_DB definition exists in your private config "
                                       "file\n'./.vorn.cfg'";
        expected.insert(expected.begin(),
                        "vc_alert(error, " + no_default + ", , Exit The Session, , 2)");
        expected.push_back("ABORT: " + no_default);
    }
    EXPECT_EQ(got, expected);
}

INSTANTIATE_TEST_SUITE_P(Table, AStart, testing::ValuesIn(table("starts")),
                         [](const auto &row) { return row.param[0]; });
