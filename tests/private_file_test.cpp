// The user's private file: what is written, when, and what it contains after a failed
// write.

#include "support/fixture.h"

#include <filesystem>
#include <regex>
#include <sstream>
#include <tuple>

static const char file[] = ".vorn.cfg";
static const char backup[] = ".vorn.cfq";

class PrivateFile : public TempDirTest {
  protected:
    void start(const std::string &text = private_cfg)
    {
        start_session(shared_cfg + "TESTRIG everyones rig\n", text);
        host::printed();
    }
    std::string at_home(const std::string &text)
    {
        return std::regex_replace(text, std::regex("([ /])HOME/"), "$1" + home + "/");
    }
    void expect_saved(const std::string &kind);
};

TEST_F(PrivateFile, IsUpdatedLineByLine)
{
    start();
    set_env("SET", "a value");
    set_env("EMPTY", "");
    set_env("LONG", repeat_x(181));
    set_env("LINES", "a\nb");
    set_env("BLANK", " \t");
    set_env("NOTE", "a!b");
    set_env(repeat_x(60), repeat_x(178)); // would make 255 characters
    for (const Case &row : cases("rewrites"))
        for (const char *newline : {"\n", "\r\n"}) {
            std::string tag, name;
            std::istringstream(row.head) >> tag >> name;
            auto text = [&](const std::string &lines) {
                return std::regex_replace(at_home(lines), std::regex("\n"), newline);
            };
            write_file(file, text(row.text));
            EXPECT_EQ(vorn_wrt_cfg(tag.c_str(), name.empty() ? nullptr : name.c_str()), 1);
            EXPECT_EQ(read_file(file), text(row.output.substr(2))) << row.head << "\n" << row.text;
            EXPECT_EQ(read_file(backup), text(row.text));
            EXPECT_EQ(drain_output(), "");
        }
    for (const std::string &left : listing(vorn_vek_tmp_file_path()))
        EXPECT_TRUE(left.starts_with("vek-test-"))
            << left; // of tests that run in the same directory
}

TEST_F(PrivateFile, KeepsEveryByteAndTerminatesWhatItWrites)
{
    start();
    const std::string order = "DATABASE_ORDER    vorn_shared, private";
    set_env("R", "a\r");
    const std::string nul = std::string("! a\0b\r\rc\n", 9);
    for (auto [before, after] : std::vector<std::pair<std::string, std::string>>{
             {"", ""},
             {nul + "DATABASE_ORDER", nul + order + "\n"},
             {"!\r\nDATABASE_ORDER", "!\r\n" + order + "\r\n"},
             {"! no end\r", "! no end\r"},
             {"ENVIRONMENT R x", "ENVIRONMENT R x"},
             {"!\r\nDATABASE_ORDER\n!", "!\r\n" + order + "\n!"}}) {
        write_file(file, before);
        EXPECT_EQ(vorn_wrt_cfg(nullptr, nullptr), 1);
        EXPECT_EQ(read_file(file), after);
    }
    // Paths are written so that a session reads them completely.
    set_env("BLANK", " \t");
    for (const auto &[path, written] : std::vector<std::pair<std::string, std::string>>{
             {"$HOME/b\r", "HOME/b\r/"}, {"$HOME/b \\", "HOME/b /"}, {"$BLANK", "./ \t/"}}) {
        if (on_windows)
            continue;
        add_database("<a> " + path);
        write_file(file, "DATABASE x\n");
        EXPECT_EQ(vorn_wrt_cfg("vorn_vek_db_add", "<a>"), 1);
        EXPECT_EQ(read_file(file),
                  at_home("DATABASE     <a>                " + written + "\nDATABASE x\n"));
        vorn_vek_db_remove("<a>");
    }
    write_file(file, "DATABASE x");
    EXPECT_EQ(vorn_wrt_cfg("vorn_vek_db_add", "%n"), 1); // which is no database
    EXPECT_EQ(read_file(file), "DATABASE     %n                 %n\nDATABASE x");
    for (const std::string &name :
         {std::string("a\nTABLE b"), std::string(" \t"), repeat_x(268), std::string("%n "),
          std::string()}) { // names that no statement can contain
        write_file(file, "DATABASE x");
        EXPECT_EQ(vorn_wrt_cfg("vorn_vek_db_add", name.c_str()), 1);
        EXPECT_EQ(read_file(file), "DATABASE x");
    }
}

TEST_F(PrivateFile, OrderStatementHasTheNamesThatFit)
{
    set_product("vorn");
    write_file(file, "DATABASE_ORDER\nDEFAULT_WRITE_DB of_another_session\n");
    EXPECT_EQ(vorn_wrt_cfg("", ""), 1);
    EXPECT_EQ(read_file(file), "DATABASE_ORDER    \nDEFAULT_WRITE_DB of_another_session\n");
    host::answer = 1; // overwrite; a save has nothing to write either
    EXPECT_EQ(vorn_sav_cfg(), 1);
    EXPECT_EQ(read_text(file).find("\nD"), std::string::npos);
    EXPECT_EQ(read_text(file).find("\nTABLE"), std::string::npos);
    write_file(file, "DATABASE_ORDER\n");
    std::string order = "DATABASE_ORDER    first";
    add_database("first first.vek");
    for (char i = 'a'; i < 'h'; ++i) {
        add_database(i + repeat_x(29) + " " + i);
        order += std::string(", ") + i + repeat_x(29);
    }
    add_database(repeat_x(16) + " y"); // would make it 265 characters
    add_database("z z");
    EXPECT_EQ(vorn_wrt_cfg("", ""), 1);
    EXPECT_EQ(read_file(file), order + "\n");
    vorn_vek_db_reorder("z", 9);
    EXPECT_EQ(vorn_wrt_cfg("", ""), 1);
    EXPECT_EQ(read_file(file), order + ", z\n");
}

// The text of the case with that head in the table.
static std::string whole_text(const std::string &head)
{
    for (const Case &row : cases("private_files"))
        if (row.head == " " + head)
            return row.text;
    return "no such row";
}

TEST_F(PrivateFile, StartsFromATemplate)
{
    for (const std::string name : {"template", "template order"}) {
        set_env("KLV_VEK_SEARCH", name == "template" ? "YES" : "yes");
        EXPECT_EQ(_vek_print_cfg_file("VEK_chk_cfg_files", name.c_str(), nullptr), 1);
        EXPECT_EQ(read_text(name), whole_text(name));
    }
    // A start does not change a file that another process has written meanwhile.
    write_file(file, "x");
    EXPECT_EQ(_vek_print_cfg_file("vek_chk_cfg_files", file, nullptr), 1);
    EXPECT_EQ(read_file(file), "x");
    EXPECT_EQ(vorn_wrt_cfg("vek_chk_cfg_files", nullptr), 1);
    EXPECT_EQ(read_text(file), whole_text("template order"));
    EXPECT_EQ(read_file(backup), "x");
    std::filesystem::remove(file);

    set_product("vorn");
    set_env("KLV_VORN", "inst");
    write_file("inst/vorn.cfg", shared_cfg);
    EXPECT_EQ(vorn_vek_init("vorn"), 0);
    EXPECT_EQ(read_text(file), whole_text("template order"));
    EXPECT_STREQ(vorn_vek_get_write_default(), "private");
}

static const char old_text[] = "Environment SET\tx\n!ENVIRONMENT SET x\nENVIRONMENT SET\n"
                               "ENVIRONMENT SET !x\nDATABASE goes x\n"
                               "ENVIRONMENT UNSET  x ! stays";

void PrivateFile::expect_saved(const std::string &kind)
{
    set_env("SET", "a value");
    set_env("KLV_UPDATE_CFG", "no");
    host::answer = 1;
    for (const std::string search : {"", " order"}) {
        set_env("KLV_VEK_SEARCH", search.empty() ? "no" : "yes");
        write_file(file, old_text);
        EXPECT_EQ(vorn_sav_cfg(), 1);
        EXPECT_EQ(drain_output(), "");
        EXPECT_EQ(read_text(file), at_home(whole_text(kind + search)));
    }
}

TEST_F(PrivateFile, IsSavedFromASessionWithoutTheUsersRecords)
{
    start();
    expect_saved("bare");
}

TEST_F(PrivateFile, IsSavedFromASessionWithTheUsersRecords)
{
    write_file("mine.vek/dampers.tbl/a.dpr");
    write_file("b.tyr");
    start("DATABASE private $HOME/private.vek\nDATABASE mine $HOME/mine.vek\n"
          "DEFAULT_WRITE_DB mine\nTABLE road road.tbl rdf\n"
          "PROPFILE damper <mine>/dampers.tbl/a.dpr\nPROPFILE tyre $HOME/b.tyr\n"
          "TESTRIG suspension .__RIG\n");
    expect_saved("full");
}

TEST_F(PrivateFile, IsSavedAsTheUserAnswers)
{
    set_env("SET", "a value");
    start();
    const std::string dialog = "vc_alert(alert, Private configuration file will be modified\n"
                               "             Choose write mode, Overwrite, Backup, Cancel, 2)";
    const std::string report = "> File 'file://" + home +
                               "/.vorn.cfg' successfully copied to\n>      'file://" + home +
                               "/.vorn.cfq'.\n> save configuration - backup created of previous "
                               "configuration file " +
                               home + "/.vorn.cfg\n\n";
    for (int answer : {1, 2, 3, 0, 4}) {
        bool writes = answer == 1 || answer == 2;
        write_file(file, old_text);
        std::filesystem::remove(backup);
        host::answer = answer;
        EXPECT_EQ(vorn_sav_cfg(), writes ? 1 : answer == 3 ? -1 : 0);
        EXPECT_EQ(host::calls_of("vc_alert"), Lines{dialog});
        EXPECT_EQ(drain_output(), answer == 2 ? report : "");
        EXPECT_EQ(read_text(file), writes ? at_home(whole_text("bare")) : old_text);
        EXPECT_EQ(read_file(backup), answer == 2 ? old_text : "");
    }
    // An update does not back up an empty file; a save with a backup does.
    write_file(file);
    write_file(backup, "older");
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_EQ(read_file(backup), "older");
    host::answer = 2;
    EXPECT_EQ(vorn_sav_cfg(), 1);
    EXPECT_EQ(drain_output() + read_file(backup), report);
    std::filesystem::remove(file);
    std::filesystem::remove(backup);
    EXPECT_EQ(vorn_sav_cfg(), 1); // there is nothing to back up
    EXPECT_EQ(drain_output(), "");
    EXPECT_FALSE(std::filesystem::exists(backup));
    EXPECT_EQ(read_file(file).find("a value"), std::string::npos);
}

TEST_F(PrivateFile, ReportsOnceWhatItCannotStore)
{
    start();
    write_file("x.dpr");
    write_file("a b.dpr");
    auto lost = [](const std::string &what) {
        return "> WARNING: " + what +
               " cannot be kept in the private cfg file; it is known in this session only.\n";
    };
    for (const auto &[name, path, line] :
         std::vector<std::tuple<std::string, std::string, std::string>>{
             {"a!b", "p", ""},
             {"a,b", "p", "DATABASE     a,b                p\n"},
             {"c", "p!q", ""},
             {"d", repeat_x(234), "DATABASE     d                  " + repeat_x(234) + "\n"},
             {"e", repeat_x(235), "DATABASE e " + repeat_x(235) + "\n"},
             {"f", repeat_x(255), "DATABASE f " + repeat_x(255) + "\n"},
             {"two", repeat_x(255), ""}}) {
        if (on_windows && path.size() == 255)
            continue; // the paths of its table directories are too long there
        write_file(file, "DATABASE x\n");
        EXPECT_EQ(vorn_vek_db_add(name.c_str(), path.c_str(), 1), 0);
        EXPECT_EQ(drain_output(), line.empty() ? lost("Database '" + name + "'") : "") << name;
        EXPECT_EQ(read_file(file), line + "DATABASE x\n");
    }
    EXPECT_EQ(vorn_vek_set_write_default("c"), 0);
    EXPECT_EQ(vorn_vek_set_def_propfile("damper", Buffer("x.dpr")), 1); // has no alias
    EXPECT_EQ(vorn_vek_set_def_propfile("spring", Buffer(home + "/a b.dpr")), 1);
    EXPECT_EQ(vorn_vek_set_def_testrig("tyre", "two words"), 1);
    EXPECT_EQ(vorn_vek_set_def_testrig("two words", "rig"), 1);
    for (const char *table : {"a!b a.tbl a", "one b!.tbl b", "two c.tbl c!"})
        add_table(table, vek_private_cfg_index);
    set_env("KLV_VEK_SEARCH", "yes");
    write_file(file, "ENVIRONMENT NONE x\r\r\nENVIRONMENT NONE y");
    host::answer = 1;
    for (bool first : {true, false}) {
        EXPECT_EQ(vorn_sav_cfg(), 1);
        EXPECT_EQ(drain_output(),
                  first
                      ? lost("Table of class 'a!b'") + lost("Table of class 'one'") +
                            lost("Table of class 'two'") + lost("Property file of class 'damper'") +
                            lost("Property file of class 'spring'") +
                            lost("Test rig of class 'tyre'") + lost("Test rig of class 'two words'")
                      : "");
    }
    std::string statements;
    std::istringstream lines(read_text(file));
    for (std::string line; std::getline(lines, line);)
        statements += line[0] == '!' ? "" : line + "\n";
    const std::string longest = on_windows ? "" : "DATABASE f " + repeat_x(255) + "\n";
    EXPECT_EQ(statements, at_home("ENVIRONMENT NONE x\nENVIRONMENT NONE y\n" + longest +
                                  "DATABASE e " + repeat_x(235) +
                                  "\n"
                                  "DATABASE     d                  " +
                                  repeat_x(234) +
                                  "\n"
                                  "DATABASE     a,b                p\n"
                                  "DATABASE     private            HOME/private.vek\n"
                                  "DATABASE_ORDER    " +
                                  (on_windows ? "" : "f, ") + "e, d, vorn_shared, private\n"));
    EXPECT_EQ(vorn_vek_set_def_testrig("tyre", "more words"), 1);
    EXPECT_EQ(vorn_sav_cfg(), 1);
    EXPECT_EQ(drain_output(), lost("Test rig of class 'tyre'")); // another one
}

TEST_F(PrivateFile, ReportsWhyItIsNotUpdated)
{
    write_file(".vorn.cfg.vek-previous", "of an update that was killed");
    start_session();
    const std::string kept =
        "ERROR: The previous text is kept in file " + home + "/.vorn.cfg.vek-previous.";
    EXPECT_EQ(host::printed()[0], kept);
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 0);
    EXPECT_EQ(drain_output(), "> " + kept + "\n");
    std::filesystem::remove(".vorn.cfg.vek-previous");
    const std::string before = read_file(file);
    set_env("KLV_UPDATE_CFG", "no");
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_FALSE(std::filesystem::exists(backup));
    set_env("KLV_UPDATE_CFG", "NO");
    const std::string copy = std::string(vorn_vek_tmp_file_path()) + "tmp_cfg_file";
    make_dir(copy);
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 0);
    EXPECT_EQ(drain_output(),
              "> ERROR: Cannot create file 'file://" + copy + "' : " + directory_error + "\n");
    EXPECT_EQ(read_file(file) + read_file(backup), before + before);
    std::filesystem::remove(copy);

    set_env("KLV_VORN_PRIVATE_CFG", "own.q"); // which is its own backup
    write_file("own.q", "DATABASE_ORDER");
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_EQ(drain_output(), "> ERROR: Old filename 'file://own.q' is same as new filename.\n");
    EXPECT_EQ(read_file("own.q"), "DATABASE_ORDER    vorn_shared, private\n");

    set_env("KLV_VORN_PRIVATE_CFG", "none/my.cfg");
    host::answer = 2;
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr) + vorn_wrt_cfg("x", nullptr) + vorn_sav_cfg(), 0);
    EXPECT_EQ(drain_output(), "> WARNING: Private cfg file none/my.cfg is unwritable.\n"
                              "> WARNING: It will not be updated during the session.\n");
}

TEST_F(PrivateFile, IsCreatedWithoutOtherFiles)
{
    start();
    const std::string dir = vorn_vek_tmp_file_path();
    for (const char *name : {"new_cfg_file", "tmp_cfg_file"})
        make_dir(dir + name);
    EXPECT_EQ(_vek_print_cfg_file("vek_chk_cfg_files", "new.cfg", nullptr), 1);
    EXPECT_EQ(read_text("new.cfg"), whole_text("template"));
    for (const char *name : {"new_cfg_file", "tmp_cfg_file"})
        std::filesystem::remove(dir + name);
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_FALSE(std::filesystem::exists(dir + "tmp_cfg_file"));
    host::printed();
    if (!on_windows)
        std::filesystem::create_symlink("/dev/null", "NUL");
    set_env("KLV_VORN_PRIVATE_CFG", "NUL"); // a device: there is nothing to sync
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
}
