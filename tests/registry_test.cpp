// The lists of databases and tables, and the directories that belong to them.

#include "support/scratch.h"

#include <algorithm>
#include <climits>
#include <filesystem>

class Registry : public Scratch {
  protected:
    Registry()
    {
        vek_private_cfg_index = 2;
    }
};

// The report of a level out of range.
static std::string bad_level(int level, int count)
{
    return "ERROR: Level '" + std::to_string(level) + "' is invalid.  " +
           (level < 1 ? "The level must be greater than zero."
                      : "There currently only '" + std::to_string(count) + "' active databases.");
}

TEST_F(Registry, DatabaseStatementsAreTakenOrLeaveOnlyTheirDirectory)
{
    set("PLACE", "w\\in//");
    make_dir("w");
    write_file("plain");
    // The operands, with "," for a blank, the result, and a directory that exists
    // afterwards, or does not if it begins with "!".
    for (Lines &row :
         rows("a,,a.vek=0=a.vek b,=1=!b b,b,and,blanks,,=0=b,and,blanks A,e=3=e "
              "A,none/e=2=!none f,plain/f=2=plain shared,g=6=g Shared,h=0=h shared,i=3=i "
              "w,$PLACE/=0=w/in tilde,./a~1//=0=a~1 x,$NONE/x=2=!x [30],c=0=c [31],d=4=!d")) {
        for (std::string &cell : row)
            std::replace(cell.begin(), cell.end(), ',', ' ');
        EXPECT_EQ(add_database(row[0], 2), std::stoi(row[1])) << row[0];
        bool missing = row[2][0] == '!';
        EXPECT_EQ(std::filesystem::exists(row[2].substr(missing)), !missing) << row[0];
    }
    EXPECT_EQ(host::printed().size(), 2U); // of vek_eval_str
    EXPECT_EQ(listing("a.vek"), Lines{});
    EXPECT_EQ(std::filesystem::current_path(), home);
    EXPECT_EQ(databases(), (Lines{"a a.vek 2", "b b and blanks 2", "Shared h 2", "w w/in 2",
                                  "tilde ./a~1 2", xs(30) + " c 2"}));
    for (size_t length : {259, 260}) { // of the current directory: 260 have no room
        std::filesystem::create_directory(home + "/" + xs(length - home.size() - 1));
        std::filesystem::current_path(home + "/" + xs(length - home.size() - 1));
        EXPECT_EQ(vorn_vek_db_exists(home.c_str()), length == 259);
    }
}

TEST_F(Registry, ALaterDatabaseGetsAllTables)
{
    for (int i = 1; i <= 31; ++i) {
        const std::string n = std::to_string(i);
        ASSERT_EQ(add_database("d" + n + " d") + add_table("c" + n + " t" + n + " e" + n, i), 0);
        EXPECT_EQ(vek_list_capacity, (i + 4) / 5 * 5);
        EXPECT_EQ(vek_list[0]->tbl_capacity, i <= 25 ? 25 : (i + 4) / 5 * 5);
    }
    EXPECT_EQ(add_database("last last.vek", 9), 0);
    ASSERT_EQ(vek_list[31]->tbl_count, 31);
    const vek_tbl_rec &copy = *vek_list[31]->tbls[30];
    EXPECT_EQ(copy.alias + std::string(" ") + copy.full_path, "<last>/t31 last.vek/t31");
    EXPECT_EQ(copy.cfg_index, 31);
}

TEST_F(Registry, LevelsOutOfRangeFindNothing)
{
    EXPECT_STREQ(vorn_vek_level2db(1), "");
    EXPECT_EQ(host::printed(), Lines{bad_level(1, 0)});
    EXPECT_STREQ(vorn_vek_class2ext("c"), "");
    add_database("one 1");
    add_database("two 2");
    add_table("c d e");
    const Lines before = databases();
    EXPECT_STREQ(vorn_vek_level2db(2), "two");
    EXPECT_EQ(vorn_vek_db2level("TWO"), 2);
    EXPECT_EQ(host::printed(), Lines{});
    for (int level : {INT_MIN, -1, 0, 3, INT_MAX}) {
        const char *results[] = {vorn_vek_level2db(level), vorn_vek_ext2path("e", level),
                                 vorn_vek_get_tbl_path("c", level)};
        EXPECT_EQ(Lines(results, results + 3), Lines(3));
        EXPECT_EQ(host::printed(), Lines(3, bad_level(level, 2)));
        EXPECT_STREQ(vek_ext2alias("*", level), "");
        vek_tbl_add(level == 0 ? 2 : level, "x", "x", "x", 0);
        EXPECT_EQ(host::printed(), Lines{});
    }
    for (int count : {INT_MIN, -7, 1000000, INT_MAX}) {
        vek_set_number_of_veks(count);
        EXPECT_EQ(vorn_vek_db2level("three"), -1);
        EXPECT_STREQ(vek_ext2alias("*", 3), "");
        EXPECT_NE(add_database("three 3"), 0);
        vek_tbl_add(2, "x", "x", "x", 0);
        vek_upd_vek_tbls(-1);
        EXPECT_STREQ(vorn_vek_input2full(Text("<three>/d/x")), "<three>/d/x");
    }
    vek_set_number_of_veks(2);
    EXPECT_EQ(databases(), before);
}

TEST_F(Registry, OnlyAWritableDatabaseBecomesTheDefault)
{
    const std::string refused = "ERROR: The specified database name is not writable by the user.";
    make_dir(std::string("locked") + probe_file);
    add_database("open open");
    add_database("locked locked");
    add_table("c d e");
    make_dir("open/tmp_bedwvorn.txt"); // too late to count
    EXPECT_EQ(vorn_vek_get_write_default(), nullptr);
    EXPECT_STREQ(vorn_vek_get_def_wri_tbl("c"), "");
    EXPECT_EQ(host::printed(), Lines{bad_level(-1, 2)});
    EXPECT_EQ(vorn_vek_set_write_default_no_cfg_update("OPEN"), 0);
    const char *name = vorn_vek_get_write_default();
    EXPECT_STREQ(vorn_vek_get_def_wri_tbl("c"), "open/d");
    EXPECT_EQ(vek_set_write_db("DEFAULT_WRITE_DB"), 1);
    EXPECT_EQ(host::printed(), Lines{});
    for (const Lines &bad : rows("locked none [31] [5000]")) {
        EXPECT_EQ(vorn_vek_set_write_default(bad[0].c_str()), 1) << bad[0];
        EXPECT_EQ(vek_set_write_db(("X " + bad[0]).c_str()), 1) << bad[0];
        EXPECT_EQ(host::printed(), (Lines{refused, refused})) << bad[0];
    }
    EXPECT_STREQ(name, "OPEN");
    EXPECT_EQ(vek_set_write_db("DEFAULT_WRITE_DB open behind"), 0);
    EXPECT_EQ(vorn_vek_set_write_default(name), 0); // its own text
    EXPECT_STREQ(name, "open");
    EXPECT_EQ(vorn_vek_db_iswritable("Open"), 1);
    EXPECT_EQ(vorn_vek_db_iswritable("locked") + vorn_vek_db_iswritable("none"), 0);
}

TEST_F(Registry, TableStatementsHaveLimitsAndNoDuplicates)
{
    add_database("one 1");
    const auto expect = [](const std::string &operands, int result, int cfg_index,
                           const std::string &what = "", int limit = 0) {
        EXPECT_EQ(add_table(operands, cfg_index), result) << operands;
        Lines lines;
        if (limit != 0)
            lines = {"ERROR: The table " + what + "'",
                     "ERROR:   is too long (MAX length is " + std::to_string(limit) + ")."};
        EXPECT_EQ(host::printed(), lines) << operands;
    };
    const std::string x16 = xs(16), x31 = xs(31), x36 = xs(36);
    expect("c d", 1, 0);
    expect(x31 + " " + x36 + " " + x16, 1, 2, "class name '" + x31, 30);
    expect("c " + x36 + " " + x16, 1, 2, "directory name '" + x36, 35);
    expect("c d " + xs(900), 1, 0, "extension '" + xs(900), 15);
    expect("c d " + x16, 1, 2, "extension '" + x16, 15);
    expect(xs(30) + " " + xs(35) + " " + xs(15) + " e", 0, 1);
    expect("y " + xs(35) + " e", 0, 2);
    for (const char *known : {"Y n n", "n n E"})
        for (int cfg_index : {1, 2, 3})
            expect(known, cfg_index == 2 ? 2 : 0, cfg_index);
    vek_tbl_add(0, x31.c_str(), "d", "f", 0);
    vek_tbl_add(0, "c", x36.c_str(), "f", 0);
    vek_tbl_add(0, "c", "d", x16.c_str(), 0);
    EXPECT_EQ(databases(), Lines{"one 1 0: " + xs(30) + " 1, y 2"});
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
    EXPECT_EQ(host::printed(), Lines{});
}

TEST_F(Registry, MissingTableDirectoriesAreMade)
{
    const Lines names = {"shared", "site", "private", "plug"};
    for (int i = 0; i < 8; ++i)
        if (const std::string &name = names[i % 4]; i < 4)
            add_database(name + " " + name, i);
        else
            add_table("c" + name + " t" + std::to_string(i % 4) + " e" + name, i % 4);
    const auto check = [&](const std::string &expected, int result) {
        std::string made;
        for (const std::string &name : names)
            for (const std::string &entry : listing(name)) {
                made += (made.empty() ? "" : " ") + name + "/" + entry;
                std::filesystem::remove(name + "/" + entry);
            }
        EXPECT_EQ(made, expected);
        EXPECT_EQ(result, 0);
    };
    char files[3][VEK_CFG_PATH_SIZE] = {"s.cfg", "x.cfg", "p.cfg"};
    vek_cfg_count = 3;
    const std::string own = "shared/t0 site/t0 site/t1 private/t0 private/t1 private/t2 "
                            "plug/t0 plug/t1 plug/t2 plug/t3";
    const std::string users = "private/t0 private/t1 private/t2 private/t3";
    check("shared/t0", vek_upd_vek_tbls(1));
    check("site/t0 site/t1", vek_upd_vek_tbls(2));
    check(own, vek_upd_vek_tbls(-1));
    check(users, vek_upd_vek_tbls(-2));
    for (int selector : {INT_MIN, -3, 0, 5, INT_MAX})
        check("", vek_upd_vek_tbls(selector));
    check(own, vek_upd_all_vek_tbls(files));
    check(users, vek_upd_plg_vek_tbls(files));
    EXPECT_EQ(host::printed(), Lines{});
    write_file("private/t1");
    write_file("private/t3");
    files[1][0] = 'y';
    EXPECT_EQ(vek_upd_all_vek_tbls(files), 1);
    EXPECT_STREQ(vek_cfg_files[1], "x.cfg");
    host::printed();
    EXPECT_EQ(vek_upd_plg_vek_tbls(files), 1);
    const Lines lines = host::printed();
    EXPECT_EQ(lines.at(2), "WARNING:   defined in the configuration file y.cfg.");
    EXPECT_EQ(lines.at(5), "WARNING:   defined in the configuration file .");
    EXPECT_EQ(listing("private").size(), 4U);
}

TEST_F(Registry, ANewDatabaseDirectoryAndTheReport)
{
    const std::string heading =
        "Current VEK table structure :\n"
        "             Class name              Table Directory            Extension\n"
        "             ----------              ---------------            ---------\n";
    const std::string row = " damper                  dampers.tbl                dpr\n";
    EXPECT_EQ(vorn_vek_tbl_info("report"), 0);
    EXPECT_EQ(read_file("report"), heading);
    add_database("one 1");
    add_table("damper dampers.tbl dpr");
    EXPECT_EQ(vorn_cre_dat("new"), 1);
    EXPECT_EQ(listing("new"), Lines{"dampers.tbl"});
    EXPECT_EQ(vorn_vek_tbl_info("report") + vorn_vek_tbl_info("") + vorn_vek_tbl_info(nullptr), 0);
    EXPECT_EQ(read_file("report"), heading + "Table       " + row);
    FILE *stream = fopen("rows", "w");
    vek_tbl_list_print(stream, "INFO");
    vek_tbl_list_print(stream, "cfg");
    fclose(stream);
    EXPECT_EQ(read_file("rows"), "Table       " + row + "TABLE       " + row);
    EXPECT_EQ(host::printed(), Lines{});
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
