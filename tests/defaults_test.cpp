// Default property files and test rigs.

#include "registry/registry.h"
#include "support/failing_malloc.h"
#include "support/fixture.h"

class Defaults : public TempDirTest {
  protected:
    Defaults()
    {
        set_product("vorn");
        vek_private_cfg_index = 2;
        for (const char *file : {"mine/x.dpr", "ours/x.dpr", "ours/only.dpr", "a b", "plain.dpr"})
            write_file(file);
        add_database("shared mine");
        add_database("vorn_shared ours");
        set_env("PLACE", ".\\ours");
    }
};

static std::string property_file(const std::string &name)
{
    const vek_dflt_list *list = vek_propfile_defaults;
    for (int i = 0; list != nullptr && i < list->count; ++i)
        if (list->entries[i]->class_ == name)
            return list->entries[i]->value + (" " + std::to_string(list->entries[i]->cfg_index));
    return "";
}

TEST_F(Defaults, PropertyFilesAreReadAndSet)
{
    EXPECT_STREQ(vorn_vek_get_def_propfile("c"), "");
    EXPECT_EQ(vek_propfile_read("PROPFILE c klvds://shared/none.dpr", 0), 2);
    EXPECT_EQ(vek_propfile_defaults, nullptr);
    // The path of a statement, the result, and what is stored.
    for (const Lines &row : rows(R"(
            plain.dpr=0=plain.dpr  .\\plain.dpr=0=./plain.dpr  $PLACE\only.dpr=0=./ours/only.dpr
            $PLACE/only.dpr=0=./ours/only.dpr  <shared>/x.dpr=0=ours/x.dpr  $NONE=2=
            klvds://vorn_shared/only.dpr=0=ours/only.dpr  file://plain.dpr=2=
            file://./plain.dpr=0=./plain.dpr  <none>/x.dpr=2=  file://<shared>/x.dpr=0=ours/x.dpr none=2=  [267]=2=  [268]=1=)")) {
        static int index = 0;
        const std::string name = "c" + std::to_string(++index);
        EXPECT_EQ(vek_propfile_read(("propfile " + name + " " + row[0] + " more").c_str(), index),
                  std::stoi(row[1]))
            << row[0];
        EXPECT_EQ(property_file(name), row[2].empty() ? "" : row[2] + " " + std::to_string(index))
            << row[0];
    }
    EXPECT_EQ(vek_propfile_read(("PROPFILE " + repeat_x(31) + " plain.dpr").c_str(), 0), 1);
    EXPECT_EQ(vek_propfile_read("PROPFILE c", 0), 1);

    EXPECT_EQ(vek_propfile_read("PROPFILE c plain.dpr", 0), 0);
    EXPECT_EQ(vorn_vek_set_def_propfile("c", Buffer("none")), 0);
    EXPECT_EQ(property_file("c"), "plain.dpr 0");
    EXPECT_EQ(vorn_vek_set_def_propfile("c", Buffer("$PLACE\\only.dpr")), 0); // no such variable
    EXPECT_EQ(vorn_vek_set_def_propfile("c", Buffer("<vorn_shared>\\only.dpr")), 1);
    EXPECT_EQ(vorn_vek_set_def_propfile(repeat_x(31).c_str(), Buffer("plain.dpr")), 0);
    EXPECT_EQ(property_file("c"), "ours/only.dpr 2");
    EXPECT_STREQ(vorn_vek_get_def_propfile("c"), "klvds://vorn_shared/only.dpr");
    EXPECT_STREQ(vorn_vek_get_def_propfile("C"), "");
}

TEST_F(Defaults, TestRigsAreStoredAsWritten)
{
    EXPECT_STREQ(vorn_vek_get_def_testrig("c"), "");
    EXPECT_EQ(vek_testrig_read("TESTRIG c", 0), 1);
    EXPECT_EQ(vek_testrig_read(("TESTRIG c " + repeat_x(268)).c_str(), 0), 1);
    EXPECT_EQ(vek_testrig_defaults, nullptr);
    EXPECT_EQ(vek_testrig_read("TESTRIG c $NONE\\.rig more", 1), 0);
    EXPECT_EQ(vorn_vek_set_def_testrig("C", "two words"), 1);
    EXPECT_EQ(vorn_vek_set_def_testrig("d", repeat_x(268).c_str()), 0);
    EXPECT_STREQ(vorn_vek_get_def_testrig("c"), "$NONE\\.rig");
    EXPECT_EQ(vek_testrig_read("TESTRIG c other", 2), 0);
    EXPECT_STREQ(vek_testrig_defaults->entries[0]->value, "other");
    EXPECT_EQ(vek_testrig_defaults->entries[0]->cfg_index, 2);
    EXPECT_STREQ(vorn_vek_get_def_testrig("C"), "two words");
}

TEST_F(Defaults, AreAppendedToAnExistingList)
{
    write_file("plain.dpr");
    for (const bool is_testrig : {true, false}) {
        const auto add = is_testrig ? vek_testrig_add : vek_propfile_add;
        const auto read = is_testrig ? vek_testrig_read : vek_propfile_read;
        add("c", "no list", 1);
        read("keyword c plain.dpr", 1);
        add("d", "e", 2);
        add(repeat_x(31).c_str(), "e", 2);
        add("d", repeat_x(268).c_str(), 2);
        const vek_dflt_list &list = is_testrig ? *vek_testrig_defaults : *vek_propfile_defaults;
        ASSERT_EQ(list.count, 2);
        EXPECT_STREQ(list.entries[1]->value, "e");
        EXPECT_EQ(list.entries[1]->cfg_index, 2);
    }
}

TEST_F(Defaults, TheListsGrowAndSurviveWithoutMemory)
{
    for (int i = 1; i <= 26; ++i) {
        const std::string name = std::to_string(i);
        const auto set_both = [&] {
            return vek_testrig_read(("TESTRIG " + name + " rig").c_str(), 0) == 0 &&
                   vek_propfile_read(("PROPFILE " + name + " plain.dpr").c_str(), 0) == 0;
        };
        for (int nth = 1; nth <= 6; ++nth) {
            fail_allocation(nth, true);
            bool is_set = set_both();
            EXPECT_NE(stop_failing(), is_set);
        }
        EXPECT_TRUE(set_both());
        EXPECT_EQ(vek_testrig_defaults->count + vek_propfile_defaults->count, 2 * i);
        EXPECT_EQ(vek_testrig_defaults->capacity, i <= 4 ? 4 : (i + 1) / 2 * 2);
        EXPECT_EQ(vek_propfile_defaults->capacity, i <= 20 ? 20 : (i + 4) / 5 * 5);
    }
}
