// Copying, deleting, renaming, backing up and appending files.

#include "support/scratch.h"

#include <filesystem>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

static const std::string missing = "No such file or directory";

class Files : public Scratch {
  protected:
    Files()
    {
        add_database("db db");
        add_table("damper d.tbl dpr");
        vek_upd_vek_tbls(-1);
        write_file("a.dpr", "text");
        make_dir("dir");
        fs::create_symlink("a.dpr", "other_name");
    }
    static void expect(int result, int expected, const Lines &lines)
    {
        EXPECT_EQ(result, expected) << testing::PrintToString(lines);
        EXPECT_EQ(host::printed(), lines);
    }
    // The system's text for what is done to a file, without its own words.
    static void refused(int result, const std::string &what, const std::string &why)
    {
        expect(result, 1, {"ERROR: Could not " + what + " : " + why});
    }
};

static Lines copied(const std::string &from, const std::string &to)
{
    return {"File '" + from + "' successfully copied to", "     '" + to + "'."};
}

TEST_F(Files, AreCopied)
{
    const auto copy = [](const std::string &from, const std::string &to) {
        return vorn_vek_copy_file2file(Text(from), Text(to));
    };
    for (size_t size : {0, 1, 511, 512, 513, 1024, 5000}) {
        std::string text(size, '\r');
        write_file("from", text);
        expect(copy("from", "db/d.tbl/to"), 0, copied("file://from", "klvds://db/d.tbl/to"));
        EXPECT_EQ(read_file("db/d.tbl/to"), text);
    }
    for (const Lines &same : rows("a.dpr=A.DPR none=NONE a.dpr=./a.dpr a.dpr=other_name"))
        expect(copy(same[0], same[1]), 1,
               {"ERROR: Old filename 'file://" + same[1] + "' is same as new filename."});
    EXPECT_EQ(read_file("a.dpr"), "text");
    refused(copy("none", "to"), "open file 'file://none'", missing);
    refused(copy("dir", "to"), "open file 'file://dir'", "Is a directory");
    EXPECT_FALSE(fs::exists("to"));
    expect(copy("a.dpr", "dir"), 1, {"ERROR: Cannot create file 'file://dir' : Is a directory"});
    expect(copy("a.dpr", "dir/" + xs(264)), 1,
           {"ERROR: Cannot create file 'dir/" + xs(264) + "' : File name too long"});
    expect(copy("a.dpr", "a\\b"), 0, copied("file://a.dpr", "file://a/b")); // opened as given
    expect(vorn_vek_copy_file2file_silent(Text("a.dpr"), Text("silent")), 0, {});
    expect(vorn_vek_copy_file2file_silent(Text("a.dpr"), Text("dir")), 1,
           {"ERROR: Cannot create file 'file://dir' : Is a directory"});
    expect(copy("a.dpr", "to"), 0, copied("file://a.dpr", "file://to"));
}

TEST_F(Files, AreCopiedIntoADatabase)
{
    Text source(".\\a.dpr");
    fs::copy("a.dpr", ".\\a.dpr");
    expect(vorn_vek_copy_file2db(source, "DB"), 0,
           copied("file://./a.dpr", "klvds://db/d.tbl/a.dpr"));
    EXPECT_EQ(read_file("db/d.tbl/a.dpr"), "text");
    expect(vorn_vek_copy_file2db(Text("a.dpr"), "none"), 1,
           {"ERROR: Invalid database alias 'none', file not copied."});
    // No table has these extensions, so the root directory is the target,
    // whether or not it can be written to.
    for (const Lines &row : rows("t.none t.dpr;[12]")) {
        write_file(row[0]);
        vorn_vek_copy_file2db(Text(row[0]), "db");
        const std::string line = host::printed().back();
        EXPECT_NE(line.find("'file:///" + row[0] + "'"), line.npos) << line;
        fs::remove("/" + row[0]);
    }
}

TEST_F(Files, AreDeletedAndRenamed)
{
    refused(vorn_vek_delete_file(Text("none")), "delete file 'file://none'", missing);
    refused(vorn_vek_delete_file(Text("dir")), "delete file 'file://dir'", "Is a directory");
    const auto rename = [](const char *from, const char *to) {
        return vorn_vek_rename_file(Text(from), Text(to));
    };
    write_file("b");
    expect(rename("a.dpr", "b"), 1,
           {"ERROR: Could not rename file 'file://a.dpr' to",
            "ERROR:                       'file://b' : File exists"});
    EXPECT_EQ(rename("none", "c"), 1);
    EXPECT_EQ(host::printed()[1], "ERROR:                       'file://c' : " + missing);
    EXPECT_EQ(read_file("a.dpr"), "text");
    expect(rename("a.dpr", "db/d.tbl/c"), 0,
           {"File 'file://a.dpr' successfully renamed to", "     'klvds://db/d.tbl/c'."});
    EXPECT_EQ(read_file("db/d.tbl/c"), "text");
    expect(vorn_vek_delete_file(Text("db/d.tbl/c")), 0,
           {"File 'klvds://db/d.tbl/c' successfully deleted."});
    expect(vorn_vek_delete_file_silent(Text("b")), 0, {});
    refused(vorn_vek_delete_file_silent(Text("b")), "delete file 'file://b'", missing);
    EXPECT_FALSE(fs::exists("b"));
}

TEST_F(Files, AreBackedUp)
{
    expect(vek_backup_file(Text("none")), 1, {});
    write_file("a.dpq", "old");
    expect(vek_backup_file(Text("a.dpr")), 0, copied("file://a.dpr", "file://a.dpq"));
    EXPECT_EQ(read_file("a.dpq"), "text");
    write_file("a.dpr", "new");
    expect(vek_backup_file_silent(Text("a.dpr")), 0, {});
    EXPECT_EQ(read_file("a.dpq"), "new");
    for (const std::string name : {"x.Q", "own.x"}) { // the second is its backup by a link
        write_file(name, "kept");
        const std::string backup = name.substr(0, name.size() - 1) + "q";
        if (name != "x.Q")
            fs::create_hard_link(name, backup);
        expect(vek_backup_file(Text(name)), 1,
               {"ERROR: Old filename 'file://" + backup + "' is same as new filename."});
        EXPECT_EQ(read_file(name), "kept");
    }
    // No new backup of a path this long, but the old one stays.
    const std::string deep = xs(200) + "/" + xs(100);
    write_file(deep + "z");
    write_file(deep + "q", "old");
    expect(vek_backup_file(Text(deep + "z")), 1,
           {"ERROR: Cannot create file '" + deep + "q' : File name too long"});
    EXPECT_EQ(read_file(deep + "q"), "old");
    write_file("z");
    expect(vek_backup_file(Text("z")), 0, copied("file://z", "file://q"));
}

TEST_F(Files, AreAppended)
{
    EXPECT_EQ(vorn_vek_append_file2file("a.dpr", "a.dpr"), 1);
    EXPECT_EQ(vorn_vek_append_file2file("a.dpr", "other_name"), 1);
    EXPECT_EQ(vorn_vek_append_file2file("a.dpr", "b"), 0);
    EXPECT_EQ(vorn_vek_append_file2file("a.dpr", "b"), 0);
    EXPECT_EQ(read_file("b") + read_file("a.dpr"), "texttexttext");
    EXPECT_EQ(vorn_vek_append_file2file("none", "new"), 1);
    EXPECT_TRUE(fs::exists("new"));
    EXPECT_EQ(vorn_vek_append_file2file("a.dpr", "dir"), 1);
    EXPECT_EQ(host::calls, Lines{});
}

TEST_F(Files, HaveATemporaryDirectoryOfTheirOwn)
{
    set("TMPDIR", home + "/dir");
    const std::string dir = vorn_vek_tmp_file_path();
    EXPECT_TRUE(dir.starts_with(home + "/dir/") && dir.ends_with("/")) << dir;
    struct stat status;
    ASSERT_EQ(stat(dir.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    set("TMPDIR", home);
    EXPECT_EQ(vorn_vek_tmp_file_path(), dir);
    if (fork() == 0)
        exit(0);
    wait(nullptr);
    EXPECT_TRUE(fs::exists(dir)); // a child that ends leaves it alone
    EXPECT_EQ(vorn_vek_get_file_separator() + std::to_string(vorn_vek_inherit_permissions()), "/0");
}

TEST_F(Files, AreNamedInTheLibrarysOwnBuffers)
{
    const auto own = [](const char *text) { return const_cast<char *>(text); };
    expect(vorn_vek_rename_file(own(vorn_vek_input2file(Text("x/a.dpr"))), Text("db/d.tbl/b.dpr")),
           0, {"File 'file://a.dpr' successfully renamed to", "     'klvds://db/d.tbl/b.dpr'."});
    write_file("f.dpr");
    expect(vorn_vek_copy_file2file(Text("f.dpr"), own(vorn_vek_input2file(Text("x/to")))), 0,
           copied("file://f.dpr", "file://to"));
    expect(vorn_vek_copy_file2db(own(vorn_vek_input2base(Text("x/f.dpr.old"))), "db"), 0,
           copied("file://f.dpr", "klvds://db/d.tbl/f.dpr"));
    vorn_vek_set_def_propfile(vorn_vek_input2file(Text("x/damper")), Text("f.dpr"));
    EXPECT_STREQ(vorn_vek_get_def_propfile("damper"), "file://f.dpr");
    write_file("cfg", "PROPFILE damper f.dpr\nTABLE");
    vek_cfg_read(vorn_vek_input2file(Text("x/cfg")), 0);
    EXPECT_EQ(host::printed().back(), "ERROR: Erroneous statement(s) ignored in file : 'cfg'.");
}

TEST_F(Files, ThatArePipesAreNotWrittenTo)
{
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    alarm(10); // ends a process that waits for a reader
    EXPECT_EQ(vorn_vek_copy_file2file(Text("a.dpr"), Text("pipe")), 1);
    EXPECT_EQ(vorn_vek_append_file2file("a.dpr", "pipe"), 1);
    alarm(0);
    EXPECT_EQ(host::printed(),
              Lines{"ERROR: Cannot create file 'file://pipe' : No such device or address"});
}
