// Paths that lead to unexpected kinds of files, files that are not text, and files that
// another user has planted.

#include "platform/platform.h"
#include "support/child.h"
#include "support/fixture.h"

#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

class OddFiles : public TempDirTest {
  protected:
    OddFiles()
    {
        set_alarm(60); // kills a process that waits for a pipe
    }
    ~OddFiles() override
    {
        set_alarm(0);
    }
};

constexpr uid_t other_user = 65534;

static std::string current_dir()
{
    std::error_code none;
    return fs::current_path(none);
}

// The results of operations on a directory: the test, the probe, the DATABASE statement,
// creating a database, a copy into it.
static std::string results(const std::string &path)
{
    std::string all = std::to_string(vorn_vek_db_exists(path.c_str()));
    all += std::to_string(vek_dir_is_writable(path.c_str()));
    all += std::to_string(add_database("d" + std::to_string(number_of_veks) + " " + path));
    all += std::to_string(vorn_cre_dat(path.c_str()));
    all += std::to_string(vorn_vek_copy_file2file(Buffer("file"), Buffer(path + "/copy")));
    return all;
}

TEST_F(OddFiles, AreNoDatabases)
{
    write_file("file", "text");
    make_dir("dir");
    make_pipe("pipe");
    for (const Lines &link : rows("loop=ring ring=loop dangling=none to_file=file to_dir=dir"))
        fs::create_symlink(link[1], link[0]);
    for (const Lines &row : rows("file=00201 pipe=00201 loop=00201 dangling=00201 to_file=00201 "
                                 "/dev/null=00201 to_dir=11000 dir/=11000 new=00000")) {
        EXPECT_EQ(results(row[0]), row[1]) << row[0];
        EXPECT_EQ(current_dir(), home) << row[0];
    }
    EXPECT_EQ(read_file("file"), "text");
}

// The current directory has been removed, or is not accessible by its path.
TEST_F(OddFiles, MayBeTheCurrentDirectory)
{
    set_env("KLV_VORN", home + "/inst");
    write_file("inst/vorn.cfg", shared_cfg);
    write_file(".vorn.cfg", private_cfg);
    set_product("vorn");
    auto start = [this] {
        if (geteuid() == 0 && seteuid(fs::exists(home + "/gone") ? 0 : other_user) != 0)
            return std::string("still root");
        std::string all = std::to_string(vorn_vek_db_exists("/"));
        all += std::to_string(add_database("d " + home));
        return all + std::to_string(vorn_vek_init("vorn")) + " " + current_dir();
    };
    make_dir("gone/dir");
    fs::current_path("gone/dir");
    fs::remove(home + "/gone/dir");
    EXPECT_EQ(run_in_child(start), "02-1 ");
    fs::remove(home + "/gone");
    fs::current_path(home);
    EXPECT_EQ(vorn_vek_init("vorn"), 0);
    make_dir("locked/dir");
    fs::current_path("locked/dir");
    fs::permissions(home, fs::perms::none);
    EXPECT_EQ(run_in_child(start), "020 " + home + "/locked/dir");
    fs::permissions(home, fs::perms::all);
    fs::permissions(home + "/locked/dir", fs::perms::none); // nor is it accessible by "."
    EXPECT_EQ(run_in_child(start), "020 " + home + "/locked/dir");
    fs::permissions(home + "/locked/dir", fs::perms::all);
}

TEST_F(OddFiles, AreNoConfigurationFilesThatBreakAReader)
{
    make_dir("dir");
    make_pipe("pipe");
    write_file("nul", std::string(1000, '\0') + "\nTESTRIG nul a\n");
    write_file("invalid", "TESTRIG invalid \xC3\x28\xFF\xFE\x80\nENVIRONMENT I \xF0\x80\n");
    write_file("line", repeat_x(10'000'000) + "\nTESTRIG line a\n");
    write_file("long");
    fs::resize_file("long", 100'000'000 / sample_stride);
    std::ofstream("long", std::ios::app) << "\nTESTRIG long a\n";
    for (const Lines &row : rows("dir=11 pipe=00 /dev/null=00 /dev/zero=11 /dev/full=11 nul=00 "
                                 "invalid=00 line=10 long=00")) {
        std::string result = std::to_string(vek_cfg_read(row[0].c_str(), 0));
        EXPECT_EQ(result + std::to_string(vek_env_read(Buffer(row[0]))), row[1]) << row[0];
        EXPECT_LT(host::printed().size(), 6u);
    }
    for (const char *name : {"nul", "line", "long"})
        EXPECT_STREQ(vorn_vek_get_def_testrig(name), "a");
    EXPECT_STREQ(vorn_vek_get_def_testrig("invalid"), "\xC3\x28\xFF\xFE\x80");
    EXPECT_STREQ(getenv("I"), "\xF0\x80");
    EXPECT_EQ(vorn_vek_copy_file2file(Buffer("/dev/zero"), Buffer("copy")), 1);
    EXPECT_EQ(vorn_vek_append_file2file("/dev/zero", "copy"), 1);
    set_env("KLV_VORN_PRIVATE_CFG", "/dev/zero");
    set_product("vorn");
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 0);
    EXPECT_EQ(vorn_sav_cfg(), 0);
}

// Whoever can write to the directory for temporary files, or to a database, can plant
// links there.
TEST_F(OddFiles, OfAnotherUserAreNotFollowed)
{
    start_session();
    const std::string dir = vorn_vek_tmp_file_path(), victim = "a victim\n";
    write_file("victim", victim);
    host::printed();
    for (bool is_link : {false, true}) {
        fs::remove_all(dir.substr(0, dir.size() - 1));
        make_dir("planted");
        if (is_link)
            fs::create_symlink(home + "/planted", dir.substr(0, dir.size() - 1));
        else
            make_dir(dir);
        for (const char *name : {"tmp_cfg_file", "new_cfg_file"})
            fs::create_symlink(home + "/victim", dir + name);
        if (!is_link && (geteuid() != 0 || chown(dir.c_str(), other_user, other_user) != 0))
            continue;
        EXPECT_EQ(run_in_child(
                      [] { return std::to_string(vorn_wrt_cfg("x", nullptr)) + drain_output(); }),
                  "1");
        EXPECT_EQ(listing(dir), (Lines{"new_cfg_file", "tmp_cfg_file"}));
        fs::remove_all("planted");
    }
    fs::create_symlink(home + "/victim", std::string("private.vek") + probe_file);
    fs::remove(".vorn.cfq");
    fs::create_symlink(home + "/victim", ".vorn.cfq");
    EXPECT_EQ(vek_dir_is_writable("private.vek"), 1);
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_EQ(read_file("victim"), victim);
    EXPECT_EQ(listing("private.vek"), (Lines{"dampers.tbl", "springs.tbl"}));
}

// A statement is one line.  What does not fit into a line is lost at the end of the session.
TEST_F(OddFiles, AreNotCreatedByNamesWithNewlines)
{
    start_session();
    const std::string more = "x\nENVIRONMENT EVIL %n", file = "dampers.tbl" + more;
    write_file(file);
    make_dir(more);
    set_env("MORE", more);
    EXPECT_EQ(vorn_vek_db_add("more", "$MORE", 1), 0);
    vorn_vek_db_add("a", more.c_str(), 1);
    vorn_vek_db_add(more.c_str(), "b", 1);
    for (const std::string &name : {more, std::string("%s%n")}) {
        vorn_vek_set_def_testrig(name.c_str(), "rig");
        vorn_vek_set_def_testrig("%n", name.c_str());
        vorn_vek_set_def_propfile(name.c_str(), Buffer(file));
        vorn_vek_set_def_propfile("damper", Buffer(name));
        vorn_vek_db_remove(name.c_str());
        vorn_vek_set_write_default(name.c_str());
    }
    EXPECT_EQ(read_file(".vorn.cfg").find("\nENVIRONMENT"), std::string::npos);
    EXPECT_EQ(vorn_sav_cfg(), 1);
    EXPECT_EQ(read_file(".vorn.cfg").find("\nENVIRONMENT"), std::string::npos);
    EXPECT_NE(read_file(".vorn.cfg").find(" %s%n "), std::string::npos) << read_file(".vorn.cfg");
}
