// Editing the list of databases while the session runs, and what a next session
// has of it.

#include "support/child.h"
#include "support/scratch.h"

#include <algorithm>
#include <filesystem>
#include <random>

class Edits : public Scratch {};

static std::string names()
{
    std::string all;
    for (int level = 1; level <= vorn_vek_get_number_of_veks(); ++level)
        all += (level == 1 ? "" : " ") + std::string(vorn_vek_level2db(level));
    return all;
}

static int edit(const Lines &row)
{
    if (row[0] == "add")
        return vorn_vek_db_add(row[1].c_str(), row[2].c_str(), std::stoi(row[3]));
    return row[0] == "remove" ? vorn_vek_db_remove(row[1].c_str())
                              : vorn_vek_set_write_default(row[1].c_str());
}

TEST_F(Edits, ChangeTheListAndThePrivateFileOrAreRefused)
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
    EXPECT_EQ(read_file(".vorn.cfg"), "! DATABASE     two words          two words\n"
                                      "DATABASE     " +
                                          xs(30) +
                                          " d.vek\n"
                                          "DATABASE     c                  c.vek\n"
                                          "DATABASE     b                  b.vek\n"
                                          "! DATABASE     a                  " +
                                          home +
                                          "\n"
                                          "! DATABASE private $HOME/private.vek\n"
                                          "DEFAULT_WRITE_DB    C\n"
                                          "DATABASE_ORDER    vorn_shared, c, " +
                                          xs(30) + "\n");
    EXPECT_EQ(vorn_vek_db_add("a", "  ", 1), 1);
    EXPECT_EQ(vorn_vek_set_write_default_no_cfg_update("vorn_shared"), 0);
    EXPECT_EQ(said(), "");
    EXPECT_NE(read_file(".vorn.cfg").find("DEFAULT_WRITE_DB    C\n"), std::string::npos);
}

TEST_F(Edits, ARemovedDatabaseLeavesItsTablesBehind)
{
    start_session();
    for (const char *name : {"a", "b", "c", "d"})
        vorn_vek_db_add(name, name, 1);
    const char *directory = vorn_vek_get_tbl_path("spring", 4);
    EXPECT_EQ(vorn_vek_db_remove(vorn_vek_level2db(4)), 0); // the record's own name
    EXPECT_STREQ(directory, "a/springs.tbl");
    EXPECT_EQ(names(), "d c b vorn_shared private");
    // A count that the host has set hides databases, or promises some.
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

// The user's databases, in order or by name, and the default for writing.
static std::string personal(bool in_order)
{
    Lines found;
    for (const std::string &row : databases())
        if (row.find(" 1: ") != row.npos)
            found.push_back(row.substr(0, row.find(" 1: ")) + "\n");
    if (!in_order)
        std::sort(found.begin(), found.end());
    std::string all = std::string("default ") + vorn_vek_get_write_default() + "\n";
    for (const std::string &row : found)
        all += row;
    return all;
}

static std::string class_defaults()
{
    std::string all;
    for (const char *name : {"damper", "Damper", "spring"})
        all += std::string(vorn_vek_get_def_propfile(name)) + " " + vorn_vek_get_def_testrig(name) +
               "\n";
    return all;
}

// One session's edits, at random.  What a next one must find: defaults of
// classes and the order are kept by a save only.
static std::string edit_at_random(unsigned seed, bool searches)
{
    std::minstd_rand random(seed);
    auto one_of = [&](const Lines &texts) { return texts[random() % texts.size()]; };
    const Lines pool = {"private", "a", "b", "c-d", "E.f", "[g]", "%s"};
    std::string saved = class_defaults(), order;
    for (int left = 3 + (int)(random() % 8); left > 0; --left) {
        std::string name = one_of(pool), path = one_of({"p", "q r", "$HOME/s", "t~u", "./v//"});
        order = "";
        switch (random() % 6) {
        case 0:
            vorn_vek_db_add(name.c_str(), path.c_str(), (int)(random() % 5));
            break;
        case 1:
            vorn_vek_db_remove(name.c_str());
            break;
        case 2:
            vorn_vek_db_reorder(name.c_str(), 1 + (int)(random() % 4));
            break;
        case 3:
            vorn_vek_set_write_default(name.c_str());
            break;
        case 4:
            vorn_vek_set_def_propfile(
                one_of({"damper", "Damper"}).c_str(),
                Text(one_of({"$HOME/x.dpr", "shared.vek/dampers.tbl/y.dpr"})));
            vorn_vek_set_def_testrig(one_of({"damper", "spring"}).c_str(), name.c_str());
            break;
        default:
            host::answer = 1 + (int)(random() % 2);
            EXPECT_EQ(vorn_sav_cfg(), 1);
            saved = class_defaults();
            order = personal(true) + (searches ? names() : "");
        }
    }
    return personal(false) + saved + order;
}

TEST_F(Edits, ANextSessionHasThem)
{
    write_file("x.dpr");
    write_file("shared.vek/dampers.tbl/y.dpr");
    set("KLV_VORN", "inst");
    write_file("inst/vorn.cfg", shared_cfg);
    for (unsigned seed = 1; seed <= 300; ++seed) {
        bool searches = seed % 2 == 0;
        set("KLV_VEK_SEARCH", searches ? "yes" : "no");
        std::filesystem::remove(".vorn.cfg");
        auto start = [] {
            set_product("vorn");
            return vorn_vek_init("vorn") == 0;
        };
        std::string left =
            in_child([&] { return start() ? edit_at_random(seed, searches) : said(); });
        std::string found = in_child([&] {
            if (!start())
                return said();
            std::string all = personal(false) + class_defaults();
            return left.size() == all.size() ? all
                                             : all + personal(true) + (searches ? names() : "");
        });
        ASSERT_EQ(found, left) << "seed " << seed << "\n" << read_file(".vorn.cfg");
    }
}
