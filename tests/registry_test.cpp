// The lists of databases and tables, and the directories that belong to them.

#include "support/fixture.h"
#include "text/text.h"

#include <climits>
#include <filesystem>

class Registry : public TempDirTest {};

TEST_F(Registry, RejectedDatabaseStatementsLeaveOnlyTheirDirectory)
{
    vek_private_cfg_index = 2;
    set_env("PLACE", "w\\in//");
    make_dir("w");
    write_file("plain");
    for (const Lines &row : table("databases")) {
        EXPECT_EQ(add_database(row[0] + " \t", 2), std::stoi(row[1])) << row[0];
        EXPECT_EQ(std::filesystem::exists(row[2]), row[3] == "yes") << row[0];
    }
    EXPECT_EQ(host::printed().size(), 2U); // of vek_eval_str
    EXPECT_EQ(databases(), (Lines{"a a.vek 2", "b b and blanks 2", "Shared h 2", "w w/in 2",
                                  "tilde ./a~1 2", repeat_x(30) + " c 2"}));
    for (size_t length : {259u, 260u}) { // of the path of the current directory; 260 is too long
        const std::string deep = home + "/" + repeat_x(length - home.size() - 1);
        make_dir(deep);
        std::filesystem::current_path(deep);
        EXPECT_EQ(vorn_vek_db_exists(home.c_str()), length == 259);
    }
}

TEST_F(Registry, ALaterDatabaseGetsAllTables)
{
    for (int i = 1; i <= 31; ++i) {
        const std::string n = std::to_string(i);
        ASSERT_EQ(add_database("d" + n + " d") + add_table("c" + n + " t" + n + " e" + n), 0);
        EXPECT_EQ(vek_list_capacity, (i + 4) / 5 * 5);
        EXPECT_EQ(vek_list[0]->tbl_capacity, i <= 25 ? 25 : (i + 4) / 5 * 5);
    }
    EXPECT_EQ(add_database("last last.vek"), 0);
    EXPECT_STREQ(vek_ext2alias("e31", 32), "<last>/t31");
    EXPECT_STREQ(vorn_vek_ext2path("e31", 32), "last.vek/t31");
}

TEST_F(Registry, LevelsOutOfRangeFindNothing)
{
    add_database("one 1");
    add_database("two 2");
    add_table("c d e");
    EXPECT_STREQ(vorn_vek_level2db(2), "two");
    EXPECT_EQ(vorn_vek_db2level("TWO"), 2);
    for (const Lines &row : table("bad_levels")) {
        const int level = std::stoi(row[0]);
        EXPECT_EQ(vorn_vek_level2db(level) + std::string(vorn_vek_ext2path("e", level)) +
                      vorn_vek_get_tbl_path("c", level) + vek_ext2alias("*", level),
                  "");
        EXPECT_EQ(host::printed(), Lines(3, row[1]));
        vek_tbl_add(level == 0 ? 2 : level, "x", "x", "x", 0);
    }
    for (int count : {INT_MIN, -7, 1000000, INT_MAX}) {
        vek_set_number_of_veks(count);
        EXPECT_EQ(vorn_vek_db2level("three"), -1);
        EXPECT_STREQ(vek_ext2alias("*", 3), "");
        EXPECT_NE(add_database("three 3"), 0);
        vek_tbl_add(2, "x", "x", "x", 0);
        vek_upd_vek_tbls(-1);
    }
    vek_set_number_of_veks(2);
    EXPECT_EQ(databases(), (Lines{"one 1 0: c 0", "two 2 0: c 0"}));
    static const char *hidden = vorn_vek_level2db(2); // must stay valid
    vek_set_number_of_veks(1); // hides the second database; the next statement replaces it
    EXPECT_EQ(add_database("two 3"), 0);
    EXPECT_STREQ(vorn_vek_ext2path("e", 2), "3/d");
    EXPECT_STREQ(hidden, "two");
}

TEST_F(Registry, OnlyAWritableDatabaseBecomesTheDefault)
{
    make_dir(std::string("locked") + probe_file);
    add_database("open open");
    add_database("locked locked");
    add_table("c d e");
    make_dir("open/tmp_bedwvorn.txt"); // too late to count
    EXPECT_STREQ(vorn_vek_get_def_wri_tbl("c"), "");
    EXPECT_EQ(host::printed(), Lines{table("bad_levels")[1][1]}); // of level -1
    EXPECT_EQ(vorn_vek_set_write_default_no_cfg_update("OPEN"), 0);
    const char *name = vorn_vek_get_write_default();
    EXPECT_STREQ(vorn_vek_get_def_wri_tbl("c"), "open/d");
    for (const Lines &bad : rows("locked none [31] [5000]")) {
        EXPECT_EQ(vorn_vek_db_iswritable(bad[0].c_str()) + vek_dir_is_writable(bad[0].c_str()), 0);
        EXPECT_EQ(vorn_vek_set_write_default(bad[0].c_str()), 1);
        EXPECT_EQ(vek_set_write_db(("X " + bad[0]).c_str()), 1);
        EXPECT_EQ(host::printed().size(), 2U);
    }
    EXPECT_STREQ(name, "OPEN");
    EXPECT_EQ(vek_set_write_db("DEFAULT_WRITE_DB open behind"), 0);
    EXPECT_EQ(vorn_vek_set_write_default(name), 0); // its own string
    EXPECT_STREQ(name, "open");
    EXPECT_EQ(vorn_vek_db_iswritable("Open"), 1);
}

TEST_F(Registry, TableStatementsHaveLimitsAndNoDuplicates)
{
    vek_private_cfg_index = 2;
    add_database("one 1");
    for (const Lines &row : table("table_statements")) {
        EXPECT_EQ(add_table(row[0], std::stoi(row[1])), std::stoi(row[2])) << row[0];
        EXPECT_EQ(host::printed(), Lines(row.begin() + 3, row.end())) << row[0];
    }
    for (const Lines &row : rows("[31]=d=f c=[36]=f c=d=[16]"))
        vek_tbl_add(0, row[0].c_str(), row[1].c_str(), row[2].c_str(), 0);
    EXPECT_EQ(databases(), Lines{"one 1 0: " + repeat_x(30) + " 1, y 2"});
}

TEST_F(Registry, TablesAreFoundByClassAndExtension)
{
    add_database("one 1");
    add_table("damper dampers.tbl dpr");
    add_table("spring springs.tbl spr");
    add_database("two 2");
    check(vorn_vek_class2ext, "SPRING=spr dpr= =");
    check(vorn_vek_class2tbl, "spring=springs.tbl none=");
    check(vorn_vek_ext2class, "DPR;12=damper dpr;[5000]=damper ;dpr= =");
    check(vorn_vek_ext2tbl, "spr;=springs.tbl dpr[5000]= damper=");
    check(vek_ext2alias, "Spr;1=<two>/springs.tbl none= =<two> *=<two> ;3=<two> *;3=<two>", 2);
    check(vorn_vek_ext2path, "dpr;1=2/dampers.tbl .dpr=", 2);
    check(vorn_vek_get_tbl_path, "Damper=1/dampers.tbl none=", 1);
    // Strings of the same length and with the same end.
    for (const char *operands :
         {"front_absorber front_absorber 1_extension", "rears_absorber rears_absorber 2_extension"})
        add_table(operands);
    add_database("a_long_database a");
    add_database("b_long_database b");
    check(vorn_vek_class2ext, "Rears_Absorber=2_extension other_absorber=");
    check(vorn_vek_ext2class, "2_EXTENSION=rears_absorber 3_extension=");
    check(vorn_vek_alias2path,
          "<B_long_database>/rears_absorber=b/rears_absorber "
          "<b_long_database>/other_absorber=b c_long_database=c_long_database");
    // So many that they are compared in blocks, and two classes with the same hash.
    ASSERT_EQ(text_hash_nocase("kecycvj"), text_hash_nocase("yfjnhjb"));
    add_table("kecycvj kecycvj.tbl first");
    for (int i = 100; i < 170; ++i) {
        const std::string number = std::to_string(i);
        add_table("class" + number + " " + number + ".tbl e" + number);
        if (i == 135)
            add_table("yfjnhjb yfjnhjb.tbl second");
    }
    check(vorn_vek_class2ext, "kecycvj=first YFJNHJB=second class100=e100 Class169=e169 class170=");
    check(vorn_vek_ext2class, "e131=class131 e132=class132 e150=class150 e171=");
    EXPECT_EQ(host::printed(), Lines{});
}

TEST_F(Registry, MissingTableDirectoriesAreCreated)
{
    const Lines names = {"shared", "site", "private", "plug"};
    vek_private_cfg_index = 2;
    for (const std::string &name : names)
        add_database(name + " " + name, number_of_veks);
    for (int i = 0; const std::string &name : names) {
        add_table(name + " t" + std::to_string(i) + " " + name, i);
        ++i;
    }
    char files[3][VEK_CFG_PATH_SIZE] = {"s.cfg", "x.cfg", "p.cfg"};
    vek_cfg_count = 3;
    for (const Lines &row : table("table_directories")) {
        EXPECT_EQ(row[0] == "first"   ? vek_upd_all_vek_tbls(files)
                  : row[0] == "later" ? vek_upd_plg_vek_tbls(files)
                                      : vek_upd_vek_tbls(std::stoi(row[0])),
                  0);
        Lines made = {row[0]};
        for (const std::string &name : names)
            for (const std::string &entry : listing(name)) {
                made.push_back(name + "/" + entry);
                std::filesystem::remove(made.back());
            }
        EXPECT_EQ(made, row);
    }
    write_file("private/t1");
    write_file("private/t3");
    files[1][0] = 'y';
    EXPECT_EQ(vek_upd_all_vek_tbls(files) + vek_upd_plg_vek_tbls(files), 2);
    vek_tbl_add(2, "x", "t4", "x", -1); // of no file
    write_file("private/t4");
    EXPECT_EQ(vek_upd_plg_vek_tbls(nullptr), 1); // the files are kept
    const Lines lines = host::printed();
    EXPECT_EQ(lines.at(2), "WARNING:   defined in the configuration file x.cfg.");
    EXPECT_EQ(lines.at(5), "WARNING:   defined in the configuration file y.cfg.");
    EXPECT_EQ(lines.at(8), "WARNING:   defined in the configuration file .");
    EXPECT_EQ(lines.at(11), lines.at(5));
    EXPECT_EQ(lines.at(17), lines.at(8));
}

// The directory of a database with many tables is listed, whatever else it contains.
TEST_F(Registry, DirectoriesOfManyTablesAreCreatedAlongsideOtherFiles)
{
    add_database("first first");
    Lines all;
    for (std::string name : {"a", "B", "c", "d", "e"}) {
        add_table(name + " " + (name == "e" ? "//" : "") + name + ".tbl " + name);
        all.push_back(name + ".tbl");
    }
    for (const std::string files : {"0", "10", "200"}) {
        for (int i = 0; i < std::stoi(files); ++i)
            write_file(files + "/" + std::to_string(i));
        make_dir(files + "/B.tbl");
        add_database(files + " " + files);
        write_file(files + "/c.tbl");
        for (int time : {1, 2}) {
            EXPECT_EQ(vek_upd_vek_tbls(vorn_vek_db2level(files.c_str())), 1) << files << time;
            EXPECT_EQ(host::printed().at(1), "WARNING:   table directory " + files + "/c.tbl");
            for (const std::string &name : all)
                EXPECT_EQ(vorn_vek_db_exists((files + "/" + name).c_str()), name != "c.tbl");
        }
    }
    std::filesystem::remove("first");
    EXPECT_EQ(vek_upd_vek_tbls(1), 1);
    EXPECT_EQ(host::printed().size(), 15u);
}

TEST_F(Registry, ANewDatabaseDirectoryAndTheReport)
{
    const std::string row = " damper                  dampers.tbl                dpr\n";
    add_database("one 1");
    add_table("damper dampers.tbl dpr");
    EXPECT_EQ(vorn_cre_dat("new"), 1);
    EXPECT_EQ(listing("new"), Lines{"dampers.tbl"});
    write_file("report", repeat_x(5000));
    EXPECT_EQ(vorn_vek_tbl_info("report") + vorn_vek_tbl_info("") + vorn_vek_tbl_info(nullptr), 0);
    text_builder rows = {};
    vek_tbl_list_print(&rows, "INFO");
    vek_tbl_list_print(&rows, "cfg");
    EXPECT_EQ(read_text("report") + std::string(rows.bytes, rows.length),
              "Current VEK table structure :\n"
              "             Class name              Table Directory            Extension\n"
              "             ----------              ---------------            ---------\n"
              "Table       " +
                  row + "Table       " + row + "TABLE       " + row);
    builder_release(&rows);
    add_table("same dampers.tbl dp2");
    add_table("deep no/such.tbl dp");
    EXPECT_EQ(vorn_cre_dat("new") + vorn_cre_dat("none/new"), 0);
    EXPECT_EQ(vorn_cre_dat("other") + vorn_vek_tbl_info("none/report"), 2);
    EXPECT_EQ(vorn_vek_get_number_of_veks(), 1);
    EXPECT_EQ(host::printed(),
              (Lines{"ERROR: ERROR: new already exists\n",
                     "ERROR: Error: Cannot create directory none/new",
                     "ERROR: Error: Cannot create directory other/no/such.tbl",
                     "ERROR: Warning: new database may not be configured",
                     "ERROR:   properly and may produce errors when accessing",
                     "ERROR: Open for vek info file 'none/report' failed: No such file or "
                     "directory.\n"}));
}

// The names of the databases in their order.
static std::string order()
{
    std::string names;
    for (int level = 1; level <= vorn_vek_get_number_of_veks(); ++level)
        names += vorn_vek_level2db(level) + std::string(level == 5 ? "" : " ");
    return names;
}

TEST_F(Registry, DatabasesAreReordered)
{
    set_product("vorn");
    for (const char *name : {"a", "b", "c", "d", "vorn_shared"})
        add_database(name + std::string(" ") + name);
    const char *name_d = vorn_vek_level2db(4);
    // An operation, its name and level or its line, the result and the order.
    for (const Lines &row : table("database_order")) {
        const int level = row[0] == "move" ? std::stoi(row[2]) : 0;
        EXPECT_EQ(row[0] == "move" ? vorn_vek_db_reorder(row[1].c_str(), level)
                                   : vek_db_setorder(("DATABASE_ORDER " + row[1]).c_str()),
                  std::stoi(row[3]))
            << row[1];
        EXPECT_EQ(order(), row[4]) << row[1];
        EXPECT_EQ(drain_output(), row[5].empty() ? "" : "> ERROR: " + row[5] + "\n");
    }
    EXPECT_EQ(vorn_vek_db_remove("c"), 0); // without tables
    EXPECT_EQ(vorn_vek_db2level("c"), -1);
    EXPECT_STREQ(name_d, "d");
    vek_set_number_of_veks(100);
    EXPECT_EQ(vorn_vek_db_reorder("a", 6), 1);
    set_env("KLV_VEK_SEARCH", "yes");
    write_file("t.cfg", "DATABASE_ORDER\nDATABASE_ORDER none, b\n");
    EXPECT_EQ(vek_cfg_read("t.cfg", 0), 2);
    const std::string bad = "> ERROR: Syntax error in line ", file = " of cfg_file 't.cfg'";
    EXPECT_EQ(drain_output(), "> " + reading("t.cfg") + "\n" + bad + "1" + file + "\n" + bad + "2" +
                                  file +
                                  ":\n    database name not defined.\n"
                                  "> ERROR: Erroneous statement(s) ignored in file : 't.cfg'.\n");
}

TEST_F(Registry, TheDatabaseReportProbesAgain)
{
    add_database("mine m");
    add_database("locked l");
    add_database("open o");
    EXPECT_EQ(vorn_vek_db_info("report"), 0);
    EXPECT_EQ(read_text("report").find("**mine"), std::string::npos);
    vorn_vek_set_write_default_no_cfg_update("MINE");
    for (const char *name : {"m", "l"})
        make_dir(name + std::string(probe_file));
    EXPECT_EQ(vorn_vek_db_info("report") + vorn_vek_db_info("") + vorn_vek_db_info(nullptr), 0);
    EXPECT_EQ(read_text("report"),
              "Current VEK search directories :\n"
              "Search level         Database alias name            Path of database\n"
              "------------         -------------------            ----------------\n"
              "   Level 1 :       **mine                           m\n"
              "   Level 2 :         locked                         l\n"
              "   Level 3 :        *open                           o\n"
              "\n\n '*' indicates a writable database.\n"
              "'**' indicates the default writable database.\n");
    EXPECT_EQ(vorn_vek_db_iswritable("mine") + vorn_vek_db_iswritable("locked"), 0);
    EXPECT_EQ(vorn_vek_db_info("none/report"), 1);
    EXPECT_EQ(drain_output(),
              "> ERROR: Open for vek info file 'none/report' failed: No such file or "
              "directory.\n\n");
}
