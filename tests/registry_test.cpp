// Databases, tables and defaults: strings that hosts hold, and lists that grow.

#include "support/failing_malloc.h"
#include "support/fixture.h"
#include "text/text.h"

#include <filesystem>

class Registry : public TempDirTest {};

TEST_F(Registry, StringsThatHostsHoldStayValidAndMayBeArguments)
{
    start_session();
    for (const char *name : {"a", "b", "c"})
        EXPECT_EQ(vorn_vek_db_add(name, "x", 1), 0);
    const char *directory = vorn_vek_get_tbl_path("spring", 3), *hidden = vorn_vek_level2db(2);
    EXPECT_EQ(vorn_vek_db_remove(vorn_vek_level2db(3)), 0); // the record's own name
    EXPECT_STREQ(directory, "x/springs.tbl");
    vek_set_number_of_veks(1);
    EXPECT_EQ(add_database("d x") + vorn_vek_db_remove("d"), 0); // replaces b
    EXPECT_STREQ(hidden, "b");
    EXPECT_EQ(vorn_vek_set_write_default("C"), 0);
    EXPECT_EQ(vorn_vek_set_write_default(vorn_vek_get_write_default()), 0);
    EXPECT_STREQ(vorn_vek_get_write_default(), "C");
    write_file("file");
    EXPECT_EQ(vorn_vek_set_def_propfile(vorn_vek_input2file(Buffer("x/class")), Buffer("file")), 1);
    EXPECT_STREQ(vorn_vek_get_def_propfile("class"), "file://file");
}

// Adds with every number of allocations that succeed.
static void expect_added(int (*read)(const char *, int), const std::string &operands)
{
    for (int nth = 1, fails = 1; fails != 0; ++nth) {
        fail_allocation(nth, true);
        const int result = read(("x " + operands).c_str(), 2);
        EXPECT_EQ(result, fails = stop_failing()) << operands << nth;
    }
}

TEST_F(Registry, ListsGrowOrStayAsTheyWereWithoutMemory)
{
    vek_private_cfg_index = 2;
    write_file("file");
    ASSERT_EQ(text_hash_nocase("kecycvj"), text_hash_nocase("yfjnhjb"));
    Lines names;
    for (int i = 0; i < 70; ++i) {
        const std::string n = std::to_string(i), name = i == 0 ? "kecycvj" : "c" + n;
        names.push_back(i == 39 ? "yfjnhjb" : name);
        if (i % 10 == 0)
            expect_added(vek_db_read, n + " d");
        expect_added(vek_tbl_read, names[i] + " t" + n + " e" + n);
        expect_added(vek_propfile_read, names[i] + " file");
        expect_added(vek_testrig_read, names[i] + " rig" + n);
    }
    for (int i = 0; i < 70; ++i) {
        const std::string n = std::to_string(i);
        EXPECT_EQ(vorn_vek_class2tbl(names[i].c_str()), "t" + n);
        EXPECT_EQ(vorn_vek_ext2path(("E" + n).c_str(), 7), "d/t" + n);
        EXPECT_EQ(vorn_vek_get_def_testrig(names[i].c_str()), "rig" + n);
    }
    vek_testrig_read("x c69 rig", 3);
    EXPECT_EQ(vek_testrig_defaults->entries[69]->cfg_index + vek_list_capacity, 13);
    const std::vector<int> capacities = {vek_list[0]->tbl_capacity, vek_propfile_defaults->capacity,
                                         vek_testrig_defaults->capacity};
    EXPECT_EQ(capacities, std::vector<int>(3, 70));
}

TEST_F(Registry, NoDirectoryExistsWhileThePathOfTheCurrentOneHas260Characters)
{
    for (size_t length : {259u, 260u}) {
        const std::string deep = home + "/" + repeat_x(length - home.size() - 1);
        make_dir(deep);
        std::filesystem::current_path(deep);
        EXPECT_EQ(vorn_vek_db_exists(home.c_str()), length == 259);
    }
}
