// The private file between processes: what the next session reads from it, and waiting for
// each other's updates.

#include "platform/durable.h"
#include "support/child.h"
#include "support/fixture.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

static const char file[] = ".vorn.cfg";
static const char backup[] = ".vorn.cfq";

class Processes : public TempDirTest {};

// The user's databases, in order or sorted by name, and the default writable database.
static std::string user_databases(bool in_order)
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

// Edit the session at random.  Returns what the next session must have: the defaults of
// classes and the order are stored by a save only.
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
                Buffer(one_of({"$HOME/x.dpr", "shared.vek/dampers.tbl/y.dpr"})));
            vorn_vek_set_def_testrig(one_of({"damper", "spring"}).c_str(), name.c_str());
            break;
        default:
            host::answer = 1 + (int)(random() % 2);
            EXPECT_EQ(vorn_sav_cfg(), 1);
            saved = class_defaults();
            order = user_databases(true) + (searches ? names() : "");
        }
    }
    return user_databases(false) + saved + order;
}

TEST_F(Processes, TheNextSessionHasTheEditsOfTheLast)
{
    write_file("x.dpr");
    write_file("shared.vek/dampers.tbl/y.dpr");
    set_env("KLV_VORN", "inst");
    write_file("inst/vorn.cfg", shared_cfg);
    for (unsigned seed = 1; seed <= 300; ++seed) {
        bool searches = seed % 2 == 0;
        set_env("KLV_VEK_SEARCH", searches ? "yes" : "no");
        std::filesystem::remove(".vorn.cfg");
        auto start = [] {
            set_product("vorn");
            return vorn_vek_init("vorn") == 0;
        };
        std::string left =
            run_in_child([&] { return start() ? edit_at_random(seed, searches) : drain_output(); });
        std::string found = run_in_child([&] {
            if (!start())
                return drain_output();
            std::string all = user_databases(false) + class_defaults();
            return left.size() == all.size()
                       ? all
                       : all + user_databases(true) + (searches ? names() : "");
        });
        ASSERT_EQ(found, left) << "seed " << seed << "\n" << read_file(".vorn.cfg");
    }
}

TEST_F(Processes, WaitForEachOthersUpdates)
{
    start_session();
    const std::string other = "ENVIRONMENT A_B c\nTESTRIG rig from_the_other\n";
    int locked[2];
    ASSERT_EQ(pipe(locked), 0);
    if (fork() == 0) {
        intptr_t lock = platform_lock_file(file, 0);
        if (write(locked[1], "x", 1) == 1)
            usleep(100000);
        write_file(file, other);
        platform_unlock(lock);
        _exit(0);
    }
    char byte;
    ASSERT_EQ(read(locked[0], &byte, 1), 1);
    vorn_wrt_cfg("x", nullptr);
    EXPECT_EQ(read_file(backup), other);
}

// Make a thousand updates in one session: of its list, of the default, and by saves.  Both
// sessions start first, so that neither has the other's database.
static void update_often(const std::string &name, const std::string &other, bool saves)
{
    if (vorn_vek_init("vorn") != 0)
        _exit(1);
    host::answer = 2;
    make_dir(name);
    while (!std::filesystem::exists(other))
        usleep(1000);
    for (int i = 0; i < 1000 / sample_stride; ++i) {
        int result = i % 4 == 0   ? vorn_vek_db_add(name.c_str(), name.c_str(), 1)
                     : i % 4 == 1 ? vorn_vek_set_write_default("private")
                     : i % 4 == 2 ? vorn_vek_db_remove(name.c_str())
                     : saves      ? 1 - vorn_sav_cfg()
                                  : 1 - vorn_wrt_cfg("", nullptr);
        if (result != 0 || drain_output().find("ERROR") != std::string::npos)
            _exit(2);
    }
    _exit(0);
}

// A save removes another session's database, which the order of that session still names.
TEST_F(Processes, ReadWhatTwoOthersKeepUpdating)
{
    set_env("KLV_VORN", "inst");
    set_product("vorn");
    write_file("inst/vorn.cfg", shared_cfg);
    int readings = 0;
    for (bool saves : {true, false}) {
        set_env("KLV_VEK_SEARCH", saves ? "no" : "yes");
        write_file(file, "ENVIRONMENT A b\n" + private_cfg + "DATABASE_ORDER private\n");
        std::filesystem::remove_all("a");
        std::filesystem::remove_all("b");
        pid_t others[2];
        for (int i : {0, 1})
            if ((others[i] = fork()) == 0)
                update_often(i == 0 ? "a" : "b", i == 0 ? "b" : "a", i == 0 && saves);
        for (int left = 2; left > 0; ++readings) {
            int status = 0;
            left -= waitpid(others[left - 1], &status, WNOHANG) > 0 ? 1 : 0;
            EXPECT_EQ(status, 0);
            ASSERT_EQ(run_in_child([this] {
                          const std::string path = home + "/" + file;
                          int result = vek_env_read(Buffer(path));
                          result +=
                              vek_cfg_read("inst/vorn.cfg", 0) + vek_cfg_read(path.c_str(), 1);
                          const char *chosen = vorn_vek_get_write_default();
                          if (result != 0)
                              return drain_output();
                          return std::string(chosen == nullptr ? "none" : chosen);
                      }),
                      "private")
                << read_file(file);
        }
    }
    EXPECT_GT(readings, 10);
    printf("%d readings\n", readings);
}

// The directory for temporary files may be removed by others.  A symbolic link is not a
// file of the library's.
TEST_F(Processes, KeepAUsersFilesAsTheyAre)
{
    start_session();
    std::filesystem::remove(vorn_vek_tmp_file_path());
    std::filesystem::permissions(file, std::filesystem::perms(0600));
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_EQ(std::filesystem::status(backup).permissions(), std::filesystem::perms(0600));
    write_file(file); // as a killed update leaves it
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_EQ(read_file(backup), private_cfg);

    set_env("KLV_VORN_PRIVATE_CFG", home + "/a\\b.cfg");
    write_file("a\\b.cfg", "DATABASE x y\n");
    write_file("a/b.cfg", "another");
    EXPECT_EQ(vorn_sav_cfg(), 1);
    EXPECT_EQ(read_file("a/b.cfg"), "another");
    EXPECT_NE(read_file("a\\b.cfg"), "DATABASE x y\n");

    // A new file that cannot be written is removed, but a symbolic link is not.
    std::filesystem::create_symlink("none.cfg", "link.cfg");
    for (const char *name : {"new.cfg", "link.cfg"})
        EXPECT_EQ(run_in_child([name] {
                      signal(SIGXFSZ, SIG_IGN);
                      rlimit limit;
                      getrlimit(RLIMIT_FSIZE, &limit);
                      const rlimit none = {0, limit.rlim_max};
                      setrlimit(RLIMIT_FSIZE, &none);
                      int result = _vek_print_cfg_file("vek_chk_cfg_files", name, nullptr);
                      setrlimit(RLIMIT_FSIZE, &limit);
                      return std::to_string(result);
                  }),
                  "0");
    EXPECT_FALSE(std::filesystem::exists("new.cfg"));
    EXPECT_TRUE(std::filesystem::is_symlink("link.cfg"));
}

// A file that cannot be written can still be backed up, if the user chose that.  A file that
// cannot be read is not backed up, and no backup is reported.
TEST_F(Processes, BackUpAFileThatCannotBeWritten)
{
    start_session();
    std::filesystem::permissions(home, std::filesystem::perms(0777));
    const std::string unwritable = "> WARNING: Private cfg file " + home + "/" + file +
                                   " is unwritable.\n> WARNING: It will not be updated during "
                                   "the session.\n";
    for (unsigned mode : {0222u, 0u, 0444u}) {
        std::filesystem::permissions(file, std::filesystem::perms(mode));
        std::string answer = run_in_child([] {
            host::printed();
            if (geteuid() == 0 && seteuid(65534) != 0) // root can write to all files
                return std::string("still root");
            int result = vorn_sav_cfg();
            return std::to_string(result) + drain_output();
        });
        std::string lines = mode == 0222 ? "> ERROR: Could not open file 'file://" + home + "/" +
                                               file + "' : Permission denied\n"
                                         : unwritable;
        EXPECT_TRUE(mode == 0444 ? answer.ends_with(lines) : answer == "0" + lines) << answer;
    }
    EXPECT_EQ(read_file(file) + read_file(backup), private_cfg + private_cfg);
}

TEST_F(Processes, HaveTheirOwnTemporaryDirectories)
{
    make_dir("dir");
    set_env("TMPDIR", home + "/dir");
    const std::string dir = vorn_vek_tmp_file_path();
    EXPECT_TRUE(dir.starts_with(home + "/dir/") && dir.ends_with("/")) << dir;
    struct stat status;
    ASSERT_EQ(stat(dir.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    set_env("TMPDIR", home);
    EXPECT_EQ(vorn_vek_tmp_file_path(), dir);
    if (fork() == 0)
        exit(0);
    wait(nullptr);
    EXPECT_TRUE(std::filesystem::exists(dir)); // an exiting child does not remove it
    EXPECT_EQ(run_in_child([this] {            // too long for the names of files in it
                  make_dir(home + "/" + repeat_x(220));
                  set_env("TMPDIR", home + "/" + repeat_x(220));
                  return std::string(vorn_vek_tmp_file_path()).substr(0, 5);
              }),
              "/tmp/");
    EXPECT_EQ(vorn_vek_get_file_separator() + std::to_string(vorn_vek_inherit_permissions()), "/0");
}
