// Names: split, resolved to real paths, and searched for.

#include "support/fixture.h"

#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>

class Names : public TempDirTest {
  protected:
    // Define the databases u/private.vek and i/shared.vek with a table for dampers.
    void define(const std::string &product = "vorn", const std::string &shared = "vorn_shared")
    {
        set_product(product);
        vek_private_cfg_index = 2;
        make_dir("u");
        make_dir("i");
        add_database("private u/private.vek");
        add_database(shared + " i/shared.vek");
        add_table("damper dampers.tbl dpr");
        vek_upd_vek_tbls(-1);
    }
};

TEST_F(Names, AreSplit)
{
    for (const Lines &row : table("names_apart")) {
        Buffer to_path(row[0]), to_file(row[0]), to_base(row[0]), to_both(row[0]);
        EXPECT_EQ(row, (Lines{row[0], vorn_vek_input2path(to_path), vorn_vek_input2file(to_file),
                              vorn_vek_input2base(to_base), vorn_vek_input2ext(row[0].c_str()),
                              vek_input2tbl_and_file(to_both)}));
        for (const Buffer *changed : {&to_path, &to_file, &to_base, &to_both})
            EXPECT_EQ(std::string(*changed).find('\\'), std::string::npos);
    }
    for (const Lines &row : table("added_extensions"))
        EXPECT_EQ(vorn_vek_add_extension(row[0].c_str(), row[1].c_str()), row[2]) << row[0];
}

TEST_F(Names, DirectoryAliasesAreSplitAndResolved)
{
    define();
    for (const Lines &row : table("directory_aliases")) {
        Buffer database("unwritten"), standard(""), alias(row[0]);
        int is_alias = 7;
        vek_split_alias(row[0].c_str(), database, standard, &is_alias);
        EXPECT_EQ(is_alias, row[1] != "unwritten") << row[0];
        EXPECT_EQ(vorn_vek_standardize_alias(row[0].c_str()), row[2]) << row[0];
        const char *result = vorn_vek_alias2path(alias);
        EXPECT_EQ(row, (Lines{row[0], +database, +standard, result}));
        EXPECT_EQ(result == alias, row[3] == row[0] || is_alias == 0) << row[0];
    }
    Buffer too_long(repeat_x(268));
    EXPECT_EQ(vorn_vek_alias2path(too_long), +too_long);
}

TEST_F(Names, AreConverted)
{
    define();
    add_table("spring springs.tbl spr");
    add_database("again u/private.vek");
    std::map<std::string, std::function<const char *(char *)>> operations = {
        {"full", vorn_vek_input2full},
        {"table", vorn_vek_input2tblpth},
        {"alias", vorn_vek_path2alias},
        {"standard", vorn_vek_standardize_alias}};
    for (const Lines &row : table("names"))
        EXPECT_EQ(operations.at(row[0])(Buffer(row[1])), row[2]) << row[0] << " " << row[1];
    EXPECT_EQ(vorn_vek_path2alias(nullptr), std::string());
    EXPECT_EQ(host::calls, Lines{});
    Buffer path("u\\private.vek\\x"), name("<private>\\x.dpr"), other("private/y");
    vorn_vek_path2alias(path);
    EXPECT_STREQ(path, "u/private.vek/x");
    set_env("KLV_VEK_EXPAND_PATH", "YES");
    EXPECT_EQ(vorn_vek_expand2full(name), +name);
    EXPECT_STREQ(name, "<private>\\x.dpr");
    set_env("KLV_VEK_EXPAND_PATH", "yes");
    const char *expanded = vorn_vek_expand2full(name);
    vorn_vek_input2full(other);
    EXPECT_STREQ(expanded, "u/private.vek/x.dpr");
    unset("KLV_VEK_EXPAND_PATH");
    EXPECT_STREQ(vorn_vek_expand2full(other), "u/private.vek/y");
    const char *directory = vorn_vek_input2path(Buffer("a/b")),
               *file = vorn_vek_input2file(Buffer("a/b"));
    for (const Lines &left : rows("c/d=c=d e=e=e")) {
        vorn_vek_input2full(Buffer(left[0]));
        EXPECT_EQ(left, (Lines{left[0], directory, file}));
    }
}

TEST_F(Names, AreSearchedFor)
{
    define();
    add_database("vorn_shared_x i/x.vek");
    for (const char *path : {"u/private.vek/dampers.tbl/a.dpr", "i/shared.vek/dampers.tbl/a.dpr",
                             "i/shared.vek/dampers.tbl/b.dpr", "i/x.vek/dampers.tbl/c.dpr",
                             "here.dpr", "u/private.vek/dampers.tbl/.dpr"})
        write_file(path);
    for (const Lines &row : table("searches")) {
        set_env("KLV_VEK_SEARCH", row[0]);
        EXPECT_EQ(search(Buffer(row[3]), std::stoi(row[2]), row[1]), row[4]) << row[2] + row[3];
    }
    EXPECT_STREQ(vek_search_levels("damper", Buffer("a.dpr"), 2147483647), "");
    EXPECT_EQ(host::printed(), Lines{});
    // Arguments in the library's own buffers.
    const char *own = vorn_vek_input2path(Buffer("u/private.vek/dampers.tbl/a.dpr/x"));
    EXPECT_STREQ(vorn_vek_input2tblpth(const_cast<char *>(own)), "<private>/dampers.tbl/a.dpr");
    own = vorn_vek_input2full(Buffer("<none>/x/c.dpr"));
    EXPECT_EQ(search(const_cast<char *>(own), 2), "i/x.vek/dampers.tbl/c.dpr");
    own = vorn_vek_input2file(Buffer("x"));
    write_file("u/private.vek/dampers.tbl/.dpr");
    EXPECT_EQ(search(Buffer(""), 1) + own, "");
}

TEST_F(Names, SharedStandsForTwoDatabasesInOneProduct)
{
    define("dunmoren", "shared");
    add_database("dunmoren_shared i/second.vek");
    for (const char *path : {"i/shared.vek/dampers.tbl/a.dpr", "i/second.vek/dampers.tbl/a.dpr",
                             "i/second.vek/dampers.tbl/b.dpr"})
        write_file(path);
    check(search, R"(<shared>/dampers.tbl/a.dpr=i/shared.vek/dampers.tbl/a.dpr
        <shared>/dampers.tbl/b.dpr=i/second.vek/dampers.tbl/b.dpr  shared/dampers.tbl/b.dpr=
        klvds:\\shared\dampers.tbl\b.dpr=i/second.vek/dampers.tbl/b.dpr)",
          1, "damper");
}

// The reverse lookup by a linear search: every table of every database in order.
static std::string linear_lookup(const std::string &path)
{
    const auto begins = [&](const char *start) {
        return vek_strncasecmp(path.c_str(), start, static_cast<int>(strlen(start))) == 0;
    };
    for (int level = 0; level < number_of_veks; ++level) {
        const vek_db_rec &db = *vek_list[level];
        for (int i = 0; i < db.tbl_count; ++i) {
            if (!begins(db.tbls[i]->full_path))
                continue;
            std::string rest = path.substr(strlen(db.tbls[i]->full_path));
            bool is_direct_child = rest[0] == '/' && rest.find('/', 1) == rest.npos;
            if (rest.size() >= 2 && !is_direct_child)
                return path;
            return "klvds://" + std::string(db.name) + "/" + db.tbls[i]->dir + rest;
        }
        if (begins(db.path) && path.find('/', strlen(db.path) + 1) == path.npos)
            return "klvds://" + std::string(db.name) + path.substr(strlen(db.path));
    }
    return path.empty() ? "" : "file://" + path;
}

TEST_F(Names, TheReverseLookupSkipsNoRelevantTable)
{
    const Lines parts = {"", "a", "aa", "A", "b", "/", "/", "/a", "/b"};
    for (const char *operands : {"one a", "two a/b", "three aa", "four b", "five a/b/a"})
        add_database(operands);
    for (const char *operands : {"c1 a e1", "c2 b e2", "c3 b/a e3", "c4 aa e4"})
        add_table(operands);
    unsigned random = 1;
    for (int i = 0; i < 20000; ++i) {
        std::string path;
        for (int part = 0; part < 6; ++part)
            path += parts[(random = random * 1664525 + 1013904223) >> 16 & 7];
        ASSERT_EQ(vorn_vek_path2alias(Buffer(path)), linear_lookup(path)) << path;
    }
}
