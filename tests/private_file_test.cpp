// The user's private file: what is written, when, and what is left of it when
// writing fails.

#include "platform/platform.h"
#include "support/child.h"
#include "support/scratch.h"

#include <cerrno>
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <unistd.h>

static const char file[] = ".vorn.cfg";
static const char backup[] = ".vorn.cfq";

class PrivateFile : public Scratch {
  protected:
    void start(const std::string &text = private_cfg)
    {
        start_session(shared_cfg, text);
        host::printed();
    }
    // What a session of its own with these statements has, and the save of it.
    void start_full()
    {
        write_file("mine.vek/dampers.tbl/a.dpr");
        write_file("b.tyr");
        start("DATABASE private $HOME/private.vek\nDATABASE mine $HOME/mine.vek\n"
              "DEFAULT_WRITE_DB mine\nTABLE road road.tbl rdf\n"
              "PROPFILE damper <mine>/dampers.tbl/a.dpr\nPROPFILE tyre $HOME/b.tyr\n"
              "TESTRIG suspension .__RIG\n");
    }
    std::string at_home(const std::string &text)
    {
        return std::regex_replace(text, std::regex("([ /])HOME/"), "$1" + home + "/");
    }
};

TEST_F(PrivateFile, IsBroughtUpToDateLineByLine)
{
    start();
    set("SET", "a value");
    set("EMPTY", "");
    set("LONG", xs(181));
    set("LINES", "a\nb");
    for (const Case &row : cases("rewrites"))
        for (const char *end : {"\n", "\r\n"}) {
            std::string tag, name;
            std::istringstream(row.head) >> tag >> name;
            auto text = [&](const std::string &lines) {
                return std::regex_replace(at_home(lines), std::regex("\n"), end);
            };
            write_file(file, text(row.text));
            EXPECT_EQ(vorn_wrt_cfg(tag.c_str(), name.empty() ? nullptr : name.c_str()), 1);
            EXPECT_EQ(read_file(file), text(row.said.substr(2))) << row.head << "\n" << row.text;
            EXPECT_EQ(read_file(backup), text(row.text));
            EXPECT_EQ(said(), "");
        }
    EXPECT_EQ(listing(vorn_vek_tmp_file_path()), Lines{});
}

TEST_F(PrivateFile, KeepsEveryByteAndEndsWhatItWrites)
{
    start();
    const std::string order = "DATABASE_ORDER    vorn_shared, private";
    const std::string nul = std::string("! a\0b\r\rc\n", 9);
    for (auto [before, after] : std::vector<std::pair<std::string, std::string>>{
             {"", ""},
             {nul + "DATABASE_ORDER", nul + order + "\n"},
             {"!\r\nDATABASE_ORDER", "!\r\n" + order + "\r\n"},
             {"! no end\r", "! no end\r"},
             {"!\r\nDATABASE_ORDER\n!", "!\r\n" + order + "\n!"}}) {
        write_file(file, before);
        EXPECT_EQ(vorn_wrt_cfg(nullptr, nullptr), 1);
        EXPECT_EQ(read_file(file), after);
    }
    write_file(file, "DATABASE x");
    EXPECT_EQ(vorn_wrt_cfg("vorn_vek_db_add", "%n"), 1);
    EXPECT_EQ(read_file(file), "DATABASE     %n                 %n\nDATABASE x");
    write_file(file, "DATABASE x");
    EXPECT_EQ(vorn_wrt_cfg("vorn_vek_db_add", "a\nTABLE b"), 1);
    EXPECT_EQ(read_file(file), "DATABASE x");
}

TEST_F(PrivateFile, OrderStatementHoldsTheNamesThatFit)
{
    set_product("vorn");
    write_file(file, "DATABASE_ORDER\n");
    EXPECT_EQ(vorn_wrt_cfg("", ""), 1);
    EXPECT_EQ(read_file(file), "DATABASE_ORDER    \n");
    std::string order = "DATABASE_ORDER    first";
    add_database("first first.vek");
    for (char i = 'a'; i < 'h'; ++i) {
        add_database(i + xs(29) + " " + i);
        order += std::string(", ") + i + xs(29);
    }
    add_database(xs(16) + " y"); // would make it 265 characters
    add_database("z z");
    EXPECT_EQ(vorn_wrt_cfg("", ""), 1);
    EXPECT_EQ(read_file(file), order + "\n");
    vorn_vek_db_reorder("z", 9);
    EXPECT_EQ(vorn_wrt_cfg("", ""), 1);
    EXPECT_EQ(read_file(file), order + ", z\n");
}

// The whole text, for which the row with that head stands in the table.
static std::string whole_text(const std::string &head)
{
    for (const Case &row : cases("private_files"))
        if (row.head == " " + head)
            return row.text;
    return "no such row";
}

TEST_F(PrivateFile, StartsFromATemplate)
{
    set("KLV_VORN", "inst");
    write_file("inst/vorn.cfg", shared_cfg);
    for (const char *search : {"YES", "yes"}) {
        set("KLV_VEK_SEARCH", search);
        set("HOME", home + "/" + search);
        make_dir(search);
        std::string made = in_child([] {
            set_product("vorn");
            return vorn_vek_init("vorn") == 0 ? vorn_vek_get_write_default() : said();
        });
        EXPECT_EQ(made, "private");
        EXPECT_EQ(read_file(std::string(search) + "/.vorn.cfg"),
                  whole_text(*search == 'y' ? "template order" : "template"));
    }
    // What another process has written meanwhile is left alone.
    write_file("other.cfg", "x");
    EXPECT_EQ(_vek_print_cfg_file("VEK_chk_cfg_files", "other.cfg", nullptr), 1);
    EXPECT_EQ(read_file("other.cfg"), "x");
    EXPECT_EQ(listing("."), (Lines{"YES", "inst", "other.cfg", "shared.vek", "yes"}));
}

static const char old_text[] = "Environment SET\tx\nENVIRONMENT UNSET  x ! stays\n"
                               "!ENVIRONMENT SET x\nENVIRONMENT SET\nENVIRONMENT SET !x\n"
                               "DATABASE goes x\n";

TEST_F(PrivateFile, IsSavedFromTheSession)
{
    set("SET", "a value");
    set("KLV_UPDATE_CFG", "no");
    host::answer = 1;
    for (const std::string kind : {"bare", "full"})
        for (const std::string search : {"", " order"})
            EXPECT_EQ(in_child([&] {
                          set("KLV_VEK_SEARCH", search.empty() ? "no" : "yes");
                          kind == "full" ? start_full() : start();
                          write_file(file, old_text);
                          return vorn_sav_cfg() == 1 ? said() + read_file(file) : "failed";
                      }),
                      at_home(whole_text(kind + search)));
    EXPECT_EQ(listing("."),
              (Lines{file, "b.tyr", "inst", "mine.vek", "private.vek", "shared.vek"}));
}

TEST_F(PrivateFile, IsSavedAsTheUserAnswers)
{
    set("SET", "a value");
    start();
    const std::string alert = "vc_alert(alert, Private configuration file will be modified\n"
                              "             Choose write mode, Overwrite, Backup, Cancel, 2)";
    const std::string told = "> File 'file://" + home +
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
        EXPECT_EQ(host::calls_of("vc_alert"), Lines{alert});
        EXPECT_EQ(said(), answer == 2 ? told : "");
        EXPECT_EQ(read_file(file), writes ? at_home(whole_text("bare")) : old_text);
        EXPECT_EQ(read_file(backup), answer == 2 ? old_text : "");
    }
    std::filesystem::remove(file);
    host::answer = 2;
    EXPECT_EQ(vorn_sav_cfg(), 1); // there is nothing to back up
    EXPECT_EQ(said(), "");
    EXPECT_FALSE(std::filesystem::exists(backup));
    EXPECT_EQ(read_file(file).find("a value"), std::string::npos);
}

TEST_F(PrivateFile, TellsWhyItIsNotUpdated)
{
    start();
    const std::string before = read_file(file);
    set("KLV_UPDATE_CFG", "no");
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_FALSE(std::filesystem::exists(backup));
    set("KLV_UPDATE_CFG", "NO");
    const std::string copy = std::string(vorn_vek_tmp_file_path()) + "tmp_cfg_file";
    make_dir(copy);
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 0);
    EXPECT_EQ(said(), "> ERROR: Cannot create file 'file://" + copy + "' : Is a directory\n");
    EXPECT_EQ(read_file(file) + read_file(backup), before + before);
    std::filesystem::remove(copy);

    set("KLV_VORN_PRIVATE_CFG", "own.q"); // is its own backup
    write_file("own.q", "DATABASE_ORDER");
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_EQ(said(), "> ERROR: Old filename 'file://own.q' is same as new filename.\n");
    EXPECT_EQ(read_file("own.q"), "DATABASE_ORDER    vorn_shared, private\n");

    set("KLV_VORN_PRIVATE_CFG", "none/my.cfg");
    host::answer = 2;
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr) + vorn_wrt_cfg("x", nullptr) + vorn_sav_cfg(), 0);
    EXPECT_EQ(said(), "> WARNING: Private cfg file none/my.cfg is unwritable.\n"
                      "> WARNING: It will not be updated during the session.\n");
}

TEST_F(PrivateFile, WaitsForTheUpdateOfAnotherProcess)
{
    start();
    const std::string other = "! of the other process\n";
    int held[2];
    ASSERT_EQ(pipe(held), 0);
    if (fork() == 0) {
        intptr_t hold = platform_hold_file(file);
        if (write(held[1], "x", 1) == 1)
            usleep(100000);
        write_file(file, other);
        platform_let_go(hold);
        _exit(0);
    }
    char byte;
    ASSERT_EQ(read(held[0], &byte, 1), 1);
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_EQ(read_file(backup) + read_file(file), other + other);
}

// Whatever is refused, the file has its old text or the new one as the result
// says, or the user is told where the old one is.
static std::string fault_in(const std::string &answer, const std::string &old,
                            const std::string &fresh, const std::string &copy)
{
    const std::string text = read_file(file);
    if (answer == "killed")
        return text == old || text == fresh || read_file(backup) == old || read_file(copy) == old
                   ? ""
                   : "lost by a kill";
    if (answer[0] == '1')
        return text == fresh ? "" : "not written";
    if (answer.find("ERROR") == answer.npos && answer.find("WARNING") == answer.npos)
        return "not told";
    if (text == old)
        return "";
    bool is_kept = read_file(copy) == old &&
                   answer.find("The previous text is kept in file " + copy + ".") != answer.npos;
    return is_kept ? "" : "lost by a refusal";
}

TEST_F(PrivateFile, IsNotLostWhateverTheSystemRefuses)
{
    set("SET", "a value");
    start();
    const std::string copy = std::string(vorn_vek_tmp_file_path()) + "tmp_cfg_file";
    const std::string old = old_text + std::string("DEFAULT_WRITE_DB x\n") + xs(5000) + "\n";
    std::set<int> reached;
    for (int kind : {0, 1, 2}) { // an update, and the answers of a save
        auto update = [&] {
            host::answer = kind;
            int result = kind == 0 ? vorn_wrt_cfg("vorn_vek_db_add", "private") : vorn_sav_cfg();
            return std::to_string(result) + said();
        };
        auto prepare = [&] {
            write_file(file, old);
            std::filesystem::remove(backup);
            std::filesystem::remove(copy);
        };
        prepare();
        in_child(update);
        const std::string fresh = read_file(file);
        EXPECT_NE(fresh, old);
        for (fault wish : {fault{1, 0, false}, fault{1, EIO, false}, fault{1, ENOSPC, true}})
            for (bool is_over = false; !is_over; ++wish.nth) {
                std::string answer;
                prepare();
                is_over = !run_with_fault(wish, update, &answer);
                EXPECT_EQ(fault_in(answer, old, fresh, copy), "")
                    << kind << " " << wish.nth << " " << wish.error << "\n"
                    << answer;
                EXPECT_TRUE(wish.error == 0 || answer != "killed") << wish.nth;
                reached.insert(wish.nth);
            }
    }
    EXPECT_GT(reached.size(), 30u);
    std::filesystem::remove(copy);
}
