// Databases, tables and defaults: strings that hosts hold, and lists that grow.

#include "support/failing_malloc.h"
#include "support/fixture.h"
#include "text/text.h"

class Registry : public TempDirTest {};

TEST_F(Registry, StringsThatHostsHoldStayValidAndMayBeArguments)
{
    start_session();
    const char *directory = vorn_vek_get_tbl_path("spring", 1), *hidden = vorn_vek_level2db(2);
    EXPECT_EQ(vorn_vek_db_remove(vorn_vek_level2db(1)), 0); // the record's own name
    vek_set_number_of_veks(0);
    EXPECT_EQ(add_database("d x") + vorn_vek_db_remove("d") + add_database("e x"), 0);
    EXPECT_STREQ(directory, "shared.vek/springs.tbl");
    EXPECT_STREQ(hidden, "private");
    EXPECT_EQ(vorn_vek_set_write_default("E"), 0);
    EXPECT_EQ(vorn_vek_set_write_default(vorn_vek_get_write_default()), 0);
    EXPECT_STREQ(vorn_vek_get_write_default(), "E");
    const char *name = vorn_vek_input2file(Buffer("x/class")); // in a buffer that is overwritten
    EXPECT_EQ(vorn_vek_set_def_propfile(name, Buffer(".vorn.cfg")), 1);
    EXPECT_STREQ(vorn_vek_get_def_propfile("class"), "file://.vorn.cfg");
}

// Adds what a statement says, after attempts in which memory runs out at each allocation.
static void expect_added(int (*read)(const char *, int), const std::string &operands)
{
    for (int nth = 1, fails = 1; fails != 0; ++nth) {
        fail_allocation(nth, true);
        const int result = read(("x " + operands).c_str(), 2);
        EXPECT_EQ(result, fails = stop_failing()) << operands;
    }
}

TEST_F(Registry, ListsGrowOrStayAsTheyWereWithoutMemory)
{
    vek_private_cfg_index = 2;
    write_file("file");
    ASSERT_EQ(text_hash_nocase("kecycvj"), text_hash_nocase("yfjnhjb"));
    Lines names;
    for (int i = 0; i < 70; ++i) {
        names.push_back(i == 0 ? "kecycvj" : i == 39 ? "yfjnhjb" : "c" + std::to_string(i));
        const std::string &name = names[i], twice = name + " " + name;
        if (i % 10 == 0)
            expect_added(vek_db_read, name + " d");
        expect_added(vek_tbl_read, twice + " e" + name);
        expect_added(vek_propfile_read, name + " file");
        expect_added(vek_testrig_read, twice);
    }
    for (const std::string &name : names) {
        EXPECT_EQ(vorn_vek_class2tbl(name.c_str()), name);
        EXPECT_EQ(vorn_vek_ext2path(("E" + name).c_str(), 7), "d/" + name);
        EXPECT_EQ(vorn_vek_get_def_testrig(name.c_str()), name);
    }
    EXPECT_EQ(vek_testrig_read("x c69 rig", 3) + vek_testrig_defaults->entries[69]->cfg_index, 3);
    EXPECT_EQ(vek_list_capacity + vek_list[6]->tbl_capacity, 80);
    EXPECT_EQ(vek_propfile_defaults->capacity + vek_testrig_defaults->capacity, 140);
}
