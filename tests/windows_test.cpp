// Windows only: drives, short names, "\" and letter case in paths, and files with the
// read-only attribute.

#include "support/fixture.h"

#include <filesystem>
#include <fstream>
#include <windows.h>

namespace fs = std::filesystem;

class Windows : public TempDirTest {};

// The short form of a path, if the file system has one.
static std::string short_form(const std::string &path)
{
    char text[VEK_PATH_SIZE] = "";
    GetShortPathNameA(path.c_str(), text, sizeof text);
    return text;
}

TEST_F(Windows, PathsAreAcceptedAsUsersWriteThem)
{
    start_session();
    const std::string path = home + "/private.vek/dampers.tbl/x.dpr";
    std::string with_backslashes = path;
    for (char &character : with_backslashes)
        character = character == '/' ? '\\' : character;
    write_file(path);
    for (const std::string &name :
         {path, with_backslashes, "file://" + path, std::string("<private>\\dampers.tbl\\x.dpr")})
        EXPECT_EQ(search(Buffer(name)), path) << name;
    EXPECT_EQ(search(Buffer("<PRIVATE>/Dampers.tbl/X.DPR")),
              home + "/private.vek/dampers.tbl/X.DPR");
    EXPECT_STREQ(vorn_vek_path2alias(Buffer(with_backslashes)),
                 "klvds://private/dampers.tbl/x.dpr");
    EXPECT_STREQ(vorn_vek_path2alias(Buffer("c:\\a\\x.dpr")), "file://c:/a/x.dpr");
    EXPECT_STREQ(vorn_vek_input2full(Buffer("file:////srv/d/x.dpr")), "//srv/d/x.dpr");
}

TEST_F(Windows, DrivesHaveCurrentDirectoriesOfTheirOwn)
{
    const fs::path here = fs::current_path();
    EXPECT_EQ(vorn_vek_db_exists("z:/") + vorn_vek_db_exists("z:") + vorn_vek_db_exists("c:"), 3);
    EXPECT_EQ(vorn_vek_db_exists("q:/"), 0);
    EXPECT_EQ(fs::current_path(), here);
    fs::current_path("z:/");
    EXPECT_EQ(add_database("a " + home + "\\a.vek"), 0);
    EXPECT_EQ(databases(), Lines{"a " + home + "/a.vek 0"});
    EXPECT_EQ(fs::current_path(), "z:\\");
    EXPECT_EQ(vek_db_read("DATABASE c c:/", 0), 0);
    EXPECT_STREQ(vek_list[1]->path, "c:");
}

// The results are those of changing to the directory.
TEST_F(Windows, DirectoriesAreTestedWithoutLeavingTheCurrentOne)
{
    const fs::path here = fs::current_path();
    make_dir("a long directory/in");
    write_file("file");
    for (const std::string &path :
         {std::string("A LONG directory"), short_form("a long directory"), home, home + "/file/..",
          std::string("a long directory\\in/"), std::string("none/.."), std::string("../.")})
        EXPECT_EQ(vorn_vek_db_exists(path.c_str()), 1) << path;
    for (const char *path :
         {"", "file", "file/", "file/.", "none", "none/in", "c:/none", "a*", "nul"})
        EXPECT_EQ(vorn_vek_db_exists(path), 0) << path;
    for (std::string path = home; path.size() < 300; path += path.size() % 10 == 0 ? "/d" : "d") {
        std::error_code ignored;
        fs::create_directory("\\\\?\\" + fs::path(path).make_preferred().string(), ignored);
        bool is_accessible = SetCurrentDirectoryA(path.c_str()) != 0;
        fs::current_path(here);
        bool is_there = vorn_vek_db_exists(path.c_str()) == 1;
        EXPECT_TRUE(is_accessible ? is_there : !is_there || path.size() >= 258) << path.size();
        EXPECT_TRUE(!is_there || path.size() <= 260) << path.size();
    }
    EXPECT_EQ(fs::current_path(), here);
}

TEST_F(Windows, ShortNamesAreReturnedInTheirLongForm)
{
    const std::string path = home + "/a long directory.vek";
    make_dir(path);
    const std::string abbreviated = short_form(path);
    if (abbreviated.find('~') == std::string::npos)
        GTEST_SKIP() << "this file system has no short names";
    EXPECT_EQ(std::string(_vek_getlongpath(abbreviated.c_str())).substr(home.size()),
              path.substr(home.size()));
    EXPECT_EQ(add_database("a " + abbreviated), 0);
    EXPECT_TRUE(std::string(vek_list[0]->path).ends_with("/a long directory.vek"));
}

TEST_F(Windows, AReadOnlyFileIsLeftAlone)
{
    start_session();
    host::printed();
    SetFileAttributesA(".vorn.cfg", FILE_ATTRIBUTE_READONLY);
    if (std::ofstream(".vorn.cfg", std::ios::app))
        GTEST_SKIP() << "this user may write to read-only files, as root may under Wine";
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 0);
    EXPECT_EQ(drain_output(), "> WARNING: Private cfg file " + home +
                                  "/.vorn.cfg is unwritable.\n"
                                  "> WARNING: It will not be updated during the session.\n");
    write_file("a");
    EXPECT_EQ(vorn_vek_copy_file2file(Buffer("a"), Buffer(".vorn.cfg")), 1);
    EXPECT_EQ(vorn_vek_delete_file(Buffer(".vorn.cfg")), 1);
    EXPECT_EQ(drain_output(),
              "> ERROR: Cannot create file 'file://.vorn.cfg' : Permission denied\n"
              "> ERROR: Could not delete file 'file://.vorn.cfg' : Permission denied\n");
    EXPECT_EQ(read_file(".vorn.cfg"), private_cfg);
    SetFileAttributesA(".vorn.cfg", FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Windows, LetterCaseAloneCanBeChanged)
{
    write_file("name.dpr", "text");
    EXPECT_EQ(vorn_vek_rename_file(Buffer("name.dpr"), Buffer("Name.dpr")), 0);
    EXPECT_EQ(listing(".").size(), 1u); // Wine keeps the old letters
    EXPECT_EQ(vorn_vek_copy_file2file(Buffer("NAME.dpr"), Buffer("Name.DPR")), 1);
    EXPECT_EQ(read_file("name.DPR"), "text");
}

TEST_F(Windows, TheDirectoryForTemporaryFilesStays)
{
    const std::string first = vorn_vek_tmp_file_path();
    EXPECT_TRUE(first.ends_with("/") && fs::is_directory(first)) << first;
    set_env("TMP", home);
    EXPECT_EQ(vorn_vek_tmp_file_path(), first);
}
