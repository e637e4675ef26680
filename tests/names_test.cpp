// Names: taken apart, turned into real paths, and searched for.

#include "support/scratch.h"

#include <climits>
#include <cstdlib>
#include <cstring>

class Names : public Scratch {
  protected:
    // The databases u/private.vek and i/shared.vek with a table for dampers.
    void define(const std::string &product, const std::string &shared)
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

TEST_F(Names, AreTakenApart)
{
    // The text, and its path, file, base, extension, and table and file.
    for (const Lines &row : rows(R"(
            =====  name==name=name==name  name.ext==name.ext=name=ext=name.ext
            a/name.ext=a=name.ext=name=ext=a/name.ext  a/b/name.ext=a/b=name.ext=name=ext=b/name.ext
            /name.ext==name.ext=name=ext=/name.ext  a/b/=a/b====b/  a.d/name=a.d=name=name=d/name=a.d/name
            a.d/=a.d===d/=a.d/  .hidden==.hidden==hidden=.hidden  name.==name.=name==name.
            a.b.c==a.b.c=a.b=c=a.b.c  a.d\b=a.d=b=b=d\b=a.d/b
            a/[265]=a=[265]=[265]==a/[265]  a/[266]=====  a.b/[5000]=====)")) {
        Text to_path(row[0]), to_file(row[0]), to_base(row[0]), to_both(row[0]);
        EXPECT_EQ(row, (Lines{row[0], vorn_vek_input2path(to_path), vorn_vek_input2file(to_file),
                              vorn_vek_input2base(to_base), vorn_vek_input2ext(row[0].c_str()),
                              vek_input2tbl_and_file(to_both)}));
        for (const Text *turned : {&to_path, &to_file, &to_base, &to_both})
            EXPECT_EQ(std::string(*turned).find('\\'), std::string::npos);
    }
    for (const Lines &row :
         rows("name=ext=name.ext name.=ext=name.ext name.old=ext=name.old =ext=.ext "
              "dir.d/name=ext=dir.d/name.ext dir/=ext=dir/.ext name=.ext=name..ext "
              "a\\b=ext=a/b.ext [263]=ext=[263].ext [264]=ext= [268]=="))
        EXPECT_EQ(vorn_vek_add_extension(row[0].c_str(), row[1].c_str()), row[2]) << row[0];
}

TEST_F(Names, DirectoryAliasesAreSplitAndResolved)
{
    define("vorn", "vorn_shared");
    // The text, the database, the standard form and the directory; "." is the text.
    for (Lines &row : rows(R"(
            klvds://private/dampers.tbl=private=<private>/dampers.tbl=u/private.vek/dampers.tbl
            <private>/dampers.tbl=private=.=u/private.vek/dampers.tbl
            <PRIVATE>/DAMPERS.TBL=PRIVATE=.=u/private.vek/dampers.tbl
            klvds://private=private=<private>=u/private.vek   <private>=private=.=u/private.vek
            private=private=.=u/private.vek   <private>/nosuch.tbl=private=.=u/private.vek
            <private>/dampers.tbl/x.dpr=private=.=u/private.vek   <private=private=.=u/private.vek
            <private>\dampers.tbl=private=.=u/private.vek
            klvds://private\dampers.tbl=private\dampers.tbl=<private\dampers.tbl>=.
            klvds://nosuch/dampers.tbl=nosuch=<nosuch>/dampers.tbl=.
            klvds://shared/dampers.tbl=shared=<shared>/dampers.tbl=i/shared.vek/dampers.tbl
            <shared>/dampers.tbl=shared=.=i/shared.vek/dampers.tbl   shared=shared=.=i/shared.vek
            Shared=Shared=.=.   <shared_x>/dampers.tbl=shared_x=.=.   /a/b=/a/b=.=.   ===.
            file:///a/b=unwritten=/a/b=/a/b)")) {
        for (std::string &cell : row)
            if (cell == ".")
                cell = row[0];
        Text database("unwritten"), standard(""), alias(row[0]);
        int is_alias = 7;
        vek_split_alias(row[0].c_str(), database, standard, &is_alias);
        EXPECT_EQ(is_alias, row[1] != "unwritten") << row[0];
        EXPECT_EQ(vorn_vek_standardize_alias(row[0].c_str()), row[2]) << row[0];
        const char *result = vorn_vek_alias2path(alias);
        EXPECT_EQ(row, (Lines{row[0], +database, +standard, result}));
        EXPECT_EQ(result == alias, row[3] == row[0] || is_alias == 0) << row[0];
    }
    Text too_long(xs(268));
    EXPECT_EQ(vorn_vek_alias2path(too_long), +too_long);
    check(vorn_vek_standardize_alias, "klvds://[260]= klvds://[268]= klvds://[257]=<[257]>");
}

TEST_F(Names, BecomeFullPathsAndBack)
{
    define("vorn", "vorn_shared");
    add_database("again u/private.vek");
    check(vorn_vek_input2full, R"(
        klvds://private/dampers.tbl/x.dpr=u/private.vek/dampers.tbl/x.dpr
        <private>\dampers.tbl\x.dpr=u/private.vek/dampers.tbl/x.dpr
        klvds:\\private\\dampers.tbl\x.dpr=u/private.vek/dampers.tbl/x.dpr
        <shared>/dampers.tbl/x.dpr=i/shared.vek/dampers.tbl/x.dpr
        klvds://private/x.dpr=u/private.vek/x.dpr  <private>/nosuch.tbl/x.dpr=u/private.vek/x.dpr
        <private>/dampers.tbl/sub/x.dpr=u/private.vek/x.dpr  private/x.dpr=u/private.vek/x.dpr
        <nosuch>//dampers.tbl/x.dpr/=<nosuch>/dampers.tbl/x.dpr  shared/x.dpr=i/shared.vek/x.dpr
        file:///a/b/x.dpr=/a/b/x.dpr  file://c:/a/x.dpr=c:/a/x.dpr  file:////srv/d/x.dpr=//srv/d/x.dpr
        file://x.dpr=file://x.dpr  a/b/x.dpr=a/b/x.dpr  a//b\c.dpr=a/b/c.dpr  x.dpr=x.dpr  /x.dpr=x.dpr
        a/b/=a/b  <private>=<private>  klvds://private=klvds://private  =
        <private>/dampers.tbl/[241]=u/private.vek/dampers.tbl/[241]  <private>/dampers.tbl/[242]=)");
    check(vorn_vek_input2tblpth, R"(u/private.vek/dampers.tbl/x.dpr=<private>/dampers.tbl/x.dpr
        U\PRIVATE.VEK\Dampers.tbl\X.dpr=<private>/dampers.tbl/X.dpr  x.dpr=x.dpr
        u/private.vek/dampers.tbl/sub/x=u/private.vek/dampers.tbl/sub/x  u\private.vek\x=u/private.vek/x)");
    Text name("<private>\\x.dpr"), other("private/y");
    set("KLV_VEK_EXPAND_PATH", "YES");
    EXPECT_EQ(vorn_vek_expand2full(name), +name);
    EXPECT_STREQ(name, "<private>\\x.dpr");
    set("KLV_VEK_EXPAND_PATH", "yes");
    const char *expanded = vorn_vek_expand2full(name);
    vorn_vek_input2full(other);
    EXPECT_STREQ(expanded, "u/private.vek/x.dpr");
    unsetenv("KLV_VEK_EXPAND_PATH");
    EXPECT_STREQ(vorn_vek_expand2full(other), "u/private.vek/y");
}

// A search, with the block of its result released.
static std::string search(char *name, int level = 1, const char *file_class = "damper")
{
    char *result = vorn_vek_search_file(file_class, name, level);
    std::string found = result;
    if (!found.empty())
        free(result);
    return found;
}

TEST_F(Names, AreSearchedFor)
{
    define("vorn", "vorn_shared");
    add_database("vorn_shared_x i/x.vek");
    for (const Lines &row :
         rows("u/private.vek/dampers.tbl/a.dpr i/shared.vek/dampers.tbl/a.dpr "
              "i/shared.vek/dampers.tbl/b.dpr i/x.vek/dampers.tbl/c.dpr here.dpr "
              "u/private.vek/dampers.tbl/.dpr"))
        write_file(row[0]);
    check(search, R"(
        <private>/dampers.tbl/a.dpr=u/private.vek/dampers.tbl/a.dpr  here.dpr=here.dpr  a.dpr=
        klvds:\\shared\dampers.tbl\b.dpr=i/shared.vek/dampers.tbl/b.dpr  <private>/dampers.tbl/b.dpr=
        <SHARED>/dampers.tbl/b.dpr=  klvds://shared_x/dampers.tbl/c.dpr=i/x.vek/dampers.tbl/c.dpr
        <shared_x>/dampers.tbl/c.dpr=  u/private.vek=  =  [5000]=)",
          1, "damper");
    set("KLV_VEK_SEARCH", "YES");
    check(search, "<none>/x/a.old=", 1, "damper");
    set("KLV_VEK_SEARCH", "yes");
    for (int level : {INT_MIN, 0, 1})
        check(search,
              "<none>/x/a.old=u/private.vek/dampers.tbl/a.dpr none= [250]= [5000]= = "
              "b=i/shared.vek/dampers.tbl/b.dpr",
              level, "Damper");
    check(search, "a.dpr=i/shared.vek/dampers.tbl/a.dpr c=i/x.vek/dampers.tbl/c.dpr", 2, "damper");
    check(search, "a.dpr= b.dpr= c.dpr=i/x.vek/dampers.tbl/c.dpr", 3, "damper");
    for (int level : {4, INT_MAX})
        check(search, "a.dpr= c.dpr= here.dpr=here.dpr", level, "damper");
    check(search, "a.dpr=", 1, "none");
    EXPECT_STREQ(vek_search_levels("damper", Text("a.dpr"), INT_MAX), "");
    EXPECT_EQ(host::printed(), Lines{});
    // Arguments in the library's own buffers.
    const char *own = vorn_vek_input2path(Text("u/private.vek/dampers.tbl/a.dpr/x"));
    EXPECT_STREQ(vorn_vek_input2tblpth(const_cast<char *>(own)), "<private>/dampers.tbl/a.dpr");
    own = vorn_vek_input2full(Text("<none>/x/c.dpr"));
    EXPECT_EQ(search(const_cast<char *>(own), 2), "i/x.vek/dampers.tbl/c.dpr");
}

TEST_F(Names, SharedHasTwoPlacesInOneProduct)
{
    define("dunmoren", "shared");
    add_database("dunmoren_shared i/second.vek");
    for (const Lines &row : rows("i/shared.vek/dampers.tbl/a.dpr i/second.vek/dampers.tbl/a.dpr "
                                 "i/second.vek/dampers.tbl/b.dpr"))
        write_file(row[0]);
    check(search, R"(<shared>/dampers.tbl/a.dpr=i/shared.vek/dampers.tbl/a.dpr
        <shared>/dampers.tbl/b.dpr=i/second.vek/dampers.tbl/b.dpr  shared/dampers.tbl/b.dpr=
        klvds:\\shared\dampers.tbl\b.dpr=i/second.vek/dampers.tbl/b.dpr)",
          1, "damper");
}

TEST_F(Names, PathsTurnIntoAliases)
{
    define("vorn", "vorn_shared");
    add_table("spring springs.tbl spr");
    // The path and its alias; "." is the path.
    for (const Lines &row : rows(R"(
            u/private.vek/dampers.tbl/x.dpr=klvds://private/dampers.tbl/x.dpr
            u\private.vek\dampers.tbl\x.dpr=klvds://private/dampers.tbl/x.dpr
            U/PRIVATE.VEK/DAMPERS.TBL/X.DPR=klvds://private/dampers.tbl/X.DPR
            i/shared.vek/springs.tbl/x.dpr=klvds://vorn_shared/springs.tbl/x.dpr
            u/private.vek/dampers.tbl/sub/x.dpr=.  u/private.vek/dampers.tbl2/x.dpr=.
            u/private.vek/dampers.tbl=klvds://private/dampers.tbl
            u/private.vek/dampers.tbl/=klvds://private/dampers.tbl/
            u/private.vek/dampers.tblz=klvds://private/dampers.tblz  u/private.vek/dampers.tblzz=.
            u/private.vek/x.dpr=klvds://private/x.dpr  u/private.vek=klvds://private
            u/private.vek/other/x.dpr=file://u/private.vek/other/x.dpr  x.dpr=file://x.dpr  =
            /else/x.dpr=file:///else/x.dpr  <private>/dampers.tbl/x.dpr=.
            klvds://private/dampers.tbl/x.dpr=.  klvds:other=.  file:///a/b=file://file:///a/b
            u~1/x=file://u~1/x  [260]=file://[260]  [261]=.  [267]=.  [268]=)"))
        EXPECT_EQ(vorn_vek_path2alias(Text(row[0])), row[1] == "." ? row[0] : row[1]) << row[0];
    Text path("u\\private.vek\\x");
    vorn_vek_path2alias(path);
    EXPECT_STREQ(path, "u/private.vek/x");
    EXPECT_EQ(vorn_vek_path2alias(nullptr), std::string());
    EXPECT_EQ(host::calls, Lines{});
}

// The way back by the plain walk: every table of every database in order.
static std::string plain_walk(const std::string &path)
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
            bool is_plain_name = rest[0] == '/' && rest.find('/', 1) == rest.npos;
            if (rest.size() >= 2 && !is_plain_name)
                return path;
            return "klvds://" + std::string(db.name) + "/" + db.tbls[i]->dir + rest;
        }
        if (begins(db.path) && path.find('/', strlen(db.path) + 1) == path.npos)
            return "klvds://" + std::string(db.name) + path.substr(strlen(db.path));
    }
    return path.empty() ? "" : "file://" + path;
}

TEST_F(Names, TheWayBackSkipsNoTableThatMatters)
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
        ASSERT_EQ(vorn_vek_path2alias(Text(path)), plain_walk(path)) << path;
    }
}
