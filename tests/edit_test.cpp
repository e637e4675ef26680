// Editing the list of databases while the session runs.

#include "support/fixture.h"

class Edits : public TempDirTest {};

static int edit(const Lines &row)
{
    if (row[0] == "add")
        return vorn_vek_db_add(row[1].c_str(), row[2].c_str(), std::stoi(row[3]));
    return row[0] == "remove" ? vorn_vek_db_remove(row[1].c_str())
                              : vorn_vek_set_write_default(row[1].c_str());
}

TEST_F(Edits, ChangeTheListAndThePrivateFileOrAreRejected)
{
    start_session(shared_cfg, private_cfg + "DATABASE_ORDER\n");
    host::printed();
    for (const Lines &row : table("database_edits")) {
        EXPECT_EQ(edit(row), std::stoi(row[4])) << row[0] << " " << row[1];
        EXPECT_EQ(names(), row[5]) << row[0] << " " << row[1];
        Lines lines(row.begin() + 6, row.end());
        std::erase(lines, "");
        EXPECT_EQ(host::printed(), lines);
    }
    EXPECT_EQ(listing("c.vek"), (Lines{"dampers.tbl", "springs.tbl"}));
    std::string expected = expand_repeats("DATABASE     [30] d.vek\n"
                                          "DATABASE     c                  c.vek\n"
                                          "DATABASE     b                  b.vek\n"
                                          "! DATABASE     a                  HOME\n"
                                          "! DATABASE private $HOME/private.vek\n"
                                          "DEFAULT_WRITE_DB    C\n"
                                          "DATABASE_ORDER    vorn_shared, c, [30]\n");
    expected.replace(expected.find("HOME"), 4, home);
    EXPECT_EQ(read_file(".vorn.cfg"), expected);
    EXPECT_EQ(vorn_vek_db_add("a", "  ", 1), 1);
    EXPECT_EQ(vorn_vek_set_write_default_no_cfg_update("vorn_shared"), 0);
    EXPECT_EQ(drain_output(), "");
    EXPECT_NE(read_file(".vorn.cfg").find("DEFAULT_WRITE_DB    C\n"), std::string::npos);
}

TEST_F(Edits, ARemovedDatabaseKeepsItsTablesValid)
{
    start_session();
    for (const char *name : {"a", "b", "c", "d"})
        vorn_vek_db_add(name, name, 1);
    const char *directory = vorn_vek_get_tbl_path("spring", 4);
    EXPECT_EQ(vorn_vek_db_remove(vorn_vek_level2db(4)), 0); // the record's own name
    EXPECT_STREQ(directory, "a/springs.tbl");
    EXPECT_EQ(names(), "d c b vorn_shared private");
    // The host can set a count that is lower or higher than the number of databases.
    vek_set_number_of_veks(2);
    EXPECT_EQ(vorn_vek_db_remove("b") + vorn_vek_db_remove("d"), 1);
    vek_set_number_of_veks(4);
    EXPECT_EQ(names(), "c b vorn_shared private");
    vek_set_number_of_veks(9);
    EXPECT_EQ(vorn_vek_db_remove("c") + vorn_vek_db_add("e", "e", 1), 1);
    vek_set_number_of_veks(3);
    EXPECT_EQ(vorn_vek_db_add("e", "e", 2), 0);
    EXPECT_EQ(names(), "b e vorn_shared private");
}
