// Copying, deleting, renaming, backing up and appending files.

#include "support/scratch.h"

#include <filesystem>
#include <sys/stat.h>

namespace fs = std::filesystem;

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
    const auto same = [](const std::string &name) {
        return Lines{"ERROR: Old filename 'file://" + name + "' is same as new filename."};
    };
    expect(copy("a.dpr", "A.DPR"), 1, same("A.DPR"));
    expect(copy("none", "NONE"), 1, same("NONE"));
    expect(copy("a.dpr", "./a.dpr"), 1, same("./a.dpr"));
    expect(copy("a.dpr", "other_name"), 1, same("other_name"));
    EXPECT_EQ(read_file("a.dpr"), "text");
    expect(copy("none", "to"), 1,
           {"ERROR: Could not open file 'file://none' : No such file or directory"});
    expect(copy("dir", "to"), 1, {"ERROR: Could not open file 'file://dir' : Is a directory"});
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
    // No table has these extensions, so the root directory is the target.
    for (const std::string &name : {"vek/test." + xs(16), std::string("vek/t.none")}) {
        const std::string target = "/" + name.substr(4);
        write_file(name);
        expect(vorn_vek_copy_file2db(Text(name), "db"), 0,
               copied("file://" + name, "file://" + target));
        EXPECT_TRUE(fs::remove(target));
    }
}

TEST_F(Files, AreDeletedAndRenamed)
{
    expect(vorn_vek_delete_file(Text("none")), 1,
           {"ERROR: Could not delete file 'file://none' : No such file or directory"});
    expect(vorn_vek_delete_file(Text("dir")), 1,
           {"ERROR: Could not delete file 'file://dir' : Is a directory"});
    const auto rename = [](const char *from, const char *to) {
        return vorn_vek_rename_file(Text(from), Text(to));
    };
    write_file("b");
    const Lines refused = {"ERROR: Could not rename file 'file://a.dpr' to",
                           "ERROR:                       'file://b' : File exists"};
    expect(rename("a.dpr", "b"), 1, refused);
    expect(rename("none", "c"), 1,
           {"ERROR: Could not rename file 'file://none' to",
            "ERROR:                       'file://c' : No such file or directory"});
    EXPECT_EQ(read_file("a.dpr"), "text");
    expect(rename("a.dpr", "db/d.tbl/c"), 0,
           {"File 'file://a.dpr' successfully renamed to", "     'klvds://db/d.tbl/c'."});
    EXPECT_EQ(read_file("db/d.tbl/c"), "text");
    expect(vorn_vek_delete_file(Text("db/d.tbl/c")), 0,
           {"File 'klvds://db/d.tbl/c' successfully deleted."});
    expect(vorn_vek_delete_file_silent(Text("b")), 0, {});
    expect(vorn_vek_delete_file_silent(Text("b")), 1,
           {"ERROR: Could not delete file 'file://b' : No such file or directory"});
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
    EXPECT_EXIT(
        {
            set("TMPDIR", home + "/none");
            bool is_none = vorn_vek_tmp_file_path() == nullptr;
            set("TMPDIR", home); // a failure is final
            exit(is_none && vorn_vek_tmp_file_path() == nullptr ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    set("TMPDIR", home + "/dir");
    const std::string dir = vorn_vek_tmp_file_path();
    EXPECT_TRUE(dir.starts_with(home + "/dir/") && dir.ends_with("/")) << dir;
    struct stat status;
    ASSERT_EQ(stat(dir.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    set("TMPDIR", home);
    EXPECT_EQ(vorn_vek_tmp_file_path(), dir);
    EXPECT_EXIT(exit(0), testing::ExitedWithCode(0), "");
    EXPECT_FALSE(fs::exists(dir));
    EXPECT_EQ(vorn_vek_get_file_separator() + std::to_string(vorn_vek_inherit_permissions()), "/0");
}
