// The private file survives power cuts, full disks, signals and other processes: the order
// of the system calls of an update, and what it does when they fail.

#include "platform/durable.h"
#include "support/child.h"
#include "support/fixture.h"
#include "support/system_calls.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace fs = std::filesystem;

static const char file[] = ".vorn.cfg";
static const char backup[] = ".vorn.cfq";
constexpr uid_t other_user = 65534;

class Durability : public TempDirTest {
  protected:
    Durability()
    {
        set_alarm(60); // kills a process that waits for another
        start_session();
        host::printed();
    }
    ~Durability() override
    {
        calls::error_for = nullptr;
        host::when_print = nullptr;
        set_alarm(0);
    }
    std::string path_of(const std::string &name)
    {
        return home + "/" + name;
    }
    // The report of an update that could not be written.
    std::string unwritten(const std::string &reason)
    {
        return "> ERROR: Private cfg file " + path_of(file) + " could not be written: " + reason +
               "\n";
    }
};

// Update the file and return the result and the lines printed.
static std::string update_with_lines()
{
    std::string result = std::to_string(vorn_wrt_cfg("x", nullptr));
    return result + drain_output();
}

static void record_calls()
{
    calls::made.clear();
    calls::error_for = [](const std::string &) { return 0; };
}

static const std::string dir_of(const std::string &path)
{
    return path.substr(0, path.rfind('/'));
}

// The position of the last such call among the first `end`; -1 if there is none.
static int last_of(const std::string &call, int end)
{
    while (--end >= 0 && calls::made[(size_t)end] != call)
        continue;
    return end;
}

static bool is_synced(const std::string &path, int since, int end)
{
    return last_of("fsync " + path, end) > std::max(last_of("write " + path, end), since);
}

// A new file replaces another only after its contents and its name are synced, and the
// renamed entry is synced before the operation ends.  Returns the number of replacements.
static int check_replacements()
{
    int count = 0;
    const int end = (int)calls::made.size();
    for (int i = 0; i < end; ++i) {
        const std::string &call = calls::made[(size_t)i];
        const size_t space = call.rfind(' ');
        if (!call.starts_with("rename "))
            continue;
        const std::string from = call.substr(7, space - 7), to = call.substr(space + 1);
        EXPECT_TRUE(is_synced(from, -1, i)) << call;
        EXPECT_TRUE(is_synced(dir_of(from), last_of("open " + from, i), i)) << call;
        EXPECT_TRUE(is_synced(dir_of(to), i, end)) << call;
        ++count;
    }
    return count;
}

TEST_F(Durability, NothingIsReplacedBeforeTheNewTextIsOnTheDisk)
{
    record_calls();
    EXPECT_EQ(vorn_vek_db_add("new", "new.vek", 1), 0);
    EXPECT_EQ(check_replacements(), 2); // the backup and the file
    fs::remove(file);
    record_calls();
    EXPECT_EQ(_vek_print_cfg_file("vek_chk_cfg_files", path_of(file).c_str(), nullptr), 1);
    EXPECT_EQ(check_replacements(), 1);
}

// A file with a second name cannot be replaced, only overwritten.
TEST_F(Durability, NothingIsOverwrittenBeforeACopyIsOnTheDisk)
{
    fs::create_hard_link(file, "second_name");
    host::answer = 1;
    record_calls();
    EXPECT_EQ(vorn_sav_cfg(), 1);
    const std::string path = path_of(file), copy = path + ".vek-previous";
    const int pos = last_of("write " + path, (int)calls::made.size());
    ASSERT_GT(pos, 0);
    const int truncated = last_of("ftruncate " + path, (int)calls::made.size());
    EXPECT_TRUE(pos < truncated && truncated < last_of("fsync " + path, (int)calls::made.size()));
    EXPECT_GT(last_of("rename " + home + "/.vek-" + std::to_string(getpid()) + "-0 " + copy, pos),
              0);
    EXPECT_EQ(check_replacements(), 1);
    EXPECT_TRUE(fs::equivalent(file, "second_name") && !fs::exists(copy));
}

static std::string text_when_reported; // contents of the file when a failure is reported

TEST_F(Durability, AFailureIsReportedOnceTheOldTextIsRestored)
{
    host::when_print = [](const char *) { text_when_reported = read_file(file); };
    calls::error_for = [](const std::string &call) {
        return call.starts_with("mkdtemp ") || call.find("-tmp/vek-") != call.npos ? EACCES : 0;
    };
    EXPECT_EQ(run_in_child(update_with_lines),
              "0" + unwritten("There is no directory for temporary files"));

    fs::create_hard_link(file, "second_name");
    calls::made.clear();
    calls::error_for = [this](const std::string &call) { // the disk is full for a moment
        return call == "write " + path_of(file) &&
                       std::count(calls::made.begin(), calls::made.end(), call) == 1
                   ? ENOSPC
                   : 0;
    };
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 0);
    EXPECT_EQ(drain_output(), unwritten("No space left on device"));
    EXPECT_EQ(text_when_reported, private_cfg);
    EXPECT_EQ(read_file(file), private_cfg);

    // If it cannot be restored, a copy is kept, and nothing is written until the user has
    // moved the copy.
    calls::error_for = [this](const std::string &call) {
        return call == "ftruncate " + path_of(file) ? EIO : 0;
    };
    const std::string kept =
        "> ERROR: The previous text is kept in file " + path_of(file) + ".vek-previous.\n";
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 0);
    EXPECT_EQ(drain_output(), unwritten("Input/output error") + kept);
    EXPECT_EQ(read_file(".vorn.cfg.vek-previous"), private_cfg);
    calls::error_for = nullptr;
    EXPECT_EQ(run_in_child(update_with_lines), "0" + kept);
    EXPECT_EQ(read_file(backup), private_cfg);
    fs::rename(".vorn.cfg.vek-previous", file);
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    // The copy of a process that was killed before it wrote is the same as the file.
    write_file(".vorn.cfg.vek-previous", read_file(file));
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_FALSE(fs::exists(".vorn.cfg.vek-previous"));
}

TEST_F(Durability, ABackupThatCannotBeCreatedKeepsTheOlderOne)
{
    write_file(backup, "older");
    calls::error_for = [](const std::string &call) {
        return call.starts_with("write ") && call.find("/.vek-") != call.npos ? ENOSPC : 0;
    };
    const std::string report =
        "> ERROR: Cannot create file 'file://" + path_of(backup) + "' : No space left on device\n";
    EXPECT_EQ(vek_backup_file(Buffer(path_of(file))), 1);
    EXPECT_EQ(drain_output(), report);
    EXPECT_EQ(vorn_sav_cfg(), 0); // the user chose a save with a backup
    EXPECT_EQ(drain_output(), report + unwritten("The backup could not be made"));
    EXPECT_EQ(read_file(backup), "older");
    EXPECT_EQ(read_file(file), private_cfg);
    EXPECT_EQ(listing("."), (Lines{file, backup, "inst", "private.vek", "shared.vek"}));
}

TEST_F(Durability, AFileThatCannotBeReplacedIsOverwritten)
{
    for (int error : {EACCES, EBUSY, EROFS, EXDEV}) {
        write_file(file, private_cfg);
        calls::error_for = [error](const std::string &call) {
            return call.starts_with("rename ") && call.ends_with(file) ? error : 0;
        };
        EXPECT_EQ(update_with_lines(), "1") << error;
        EXPECT_NE(read_file(file), private_cfg);
        EXPECT_EQ(read_file(backup), private_cfg);
    }
    write_file(file); // has nothing to lose, and gets nothing
    calls::error_for = [this](const std::string &call) {
        return call.starts_with("rename ") ? EXDEV : call == "write " + path_of(file) ? ENOSPC : 0;
    };
    host::answer = 1;
    EXPECT_EQ(vorn_sav_cfg(), 0);
    EXPECT_EQ(drain_output(), unwritten("No space left on device"));
    EXPECT_EQ(read_file(file), "");
    calls::error_for = nullptr;
    // What cannot be a copy of the library's does not prevent updates.
    const char *const copy = ".vorn.cfg.vek-previous";
    write_file("text", "text");
    for (const char *kind : {"link", "second name", "empty", "directory"}) {
        fs::remove_all(copy);
        if (*kind == 'l')
            fs::create_symlink("text", copy);
        else if (*kind == 's')
            fs::create_hard_link("text", copy);
        else if (*kind == 'e')
            write_file(copy);
        else
            make_dir(copy);
        EXPECT_EQ(update_with_lines(), "1") << kind;
        EXPECT_TRUE(fs::exists(copy)) << kind;
    }
}

// Another program, which writes the file without locking it.
static int edits_left;
static void edit(const char *)
{
    if (edits_left-- > 0)
        write_file(file, read_file(file) + "! edited\n");
}

TEST_F(Durability, AnUpdateIsRetriedWhenAnotherProgramChangesTheFile)
{
    make_dir(backup); // each try reports that there is no backup, which triggers the edit
    host::when_print = edit;
    edits_left = 1;
    EXPECT_EQ(vorn_wrt_cfg("vorn_vek_db_add", "private"), 1);
    EXPECT_EQ(read_file(file), "DATABASE     private            " + path_of("private.vek\n") +
                                   "DATABASE private $HOME/private.vek\n"
                                   "DEFAULT_WRITE_DB    private\n! edited\n");
    fs::remove(file);
    calls::error_for = [](const std::string &call) {
        if (call.starts_with("rename ") && call.ends_with(file) && !fs::exists(file))
            write_file(file, "DATABASE another's\n");
        return 0;
    };
    EXPECT_EQ(vorn_wrt_cfg("vorn_vek_db_add", "private"), 1); // would create it
    EXPECT_EQ(read_file(file), "DATABASE     private            " + path_of("private.vek\n") +
                                   "DATABASE another's\n");
    calls::error_for = nullptr;
    edits_left = 100;
    host::printed();
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 0);
    EXPECT_TRUE(drain_output().ends_with(unwritten("Another program keeps changing it")));
    EXPECT_EQ(listing(".").size(), 5u);
}

// Neither a reader nor an update waits forever for the owner of a lock.
TEST_F(Durability, WaitsForLocksAreBounded)
{
    const intptr_t lock = platform_lock_file(file, 0);
    record_calls();
    EXPECT_EQ(vek_cfg_read(file, 1) + vek_env_read(Buffer(file)), 3); // duplicate database
    host::printed();
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 0); // 10 seconds later
    EXPECT_EQ(drain_output(), unwritten("Another process has kept it locked for 10 seconds"));
    platform_unlock(lock);
    static pid_t child;
    make_dir(backup);
    host::when_print = [](const char *) {
        if (child == 0 && (child = fork()) == 0) // as another thread of the host could do
            for (;;)
                pause();
    };
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    ASSERT_GT(child, 0); // kill with 0 or -1 would reach other processes
    const intptr_t again = platform_lock_file(file, 0);
    EXPECT_GE(again, 0) << "the child still holds the lock";
    platform_unlock(again);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    for (int error : {ENOLCK, EOPNOTSUPP}) { // a file system without locks
        calls::error_for = [error](const std::string &call) {
            return call.starts_with("flock") ? error : 0;
        };
        EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    }
}

// Every other call is interrupted by a signal, or fails to open a file without blocking
// because of a lease.
TEST_F(Durability, SignalsAndLeasesFailNoOperation)
{
    write_file("source", repeat_x(100000));
    EXPECT_EQ(vorn_vek_tbl_info("report"), 0);
    const std::string report = read_file("report");
    for (int error : {EINTR, EAGAIN}) {
        bool fails = false;
        calls::error_for = [&](const std::string &call) {
            if (error == EAGAIN && !(call.starts_with("poll ") && fs::exists(call.substr(5))))
                return 0;
            fails = !fails;
            return fails ? error : 0;
        };
        const std::string name = strerror(error);
        EXPECT_EQ(vorn_vek_db_add("new", name.c_str(), 1) + vorn_vek_db_remove("new"), 0) << error;
        EXPECT_EQ(vorn_sav_cfg() + vek_cfg_read(file, 9), 1 + 3); // duplicate databases
        EXPECT_EQ(vorn_vek_copy_file2file(Buffer("source"), Buffer("target")), 0);
        EXPECT_EQ(read_file("target"), repeat_x(100000));
        EXPECT_EQ(vorn_vek_tbl_info("report"), 0);
        EXPECT_EQ(read_file("report"), report);
        EXPECT_EQ(vek_dir_is_writable("private.vek") + vek_file_exists("source"), 2);
        EXPECT_EQ(drain_output().find("could not"), std::string::npos);
    }
    make_pipe("pipe");
    calls::error_for = [](const std::string &) { return EAGAIN; }; // has no reader yet
    EXPECT_EQ(vek_file_exists("pipe"), 0);
}

static std::string kind_of(const std::string &call)
{
    return call.find("stat ") < 6 ? "stat" : call.substr(0, call.find(' '));
}

// Each call of an update fails in turn: alone, with all later calls, or with the later calls
// of its kind.
TEST_F(Durability, AfterAnyFailureTheTextIsInTheFileOrInTheCopyReported)
{
    const std::string old_text = private_cfg + "! " + repeat_x(60000) + "\n",
                      copy = ".vorn.cfg.vek-previous";
    std::string new_text;
    host::answer = 1;
    for (auto [error, later] : {std::pair(EIO, 0), {ENOSPC, 0}, {EACCES, 'a'}, {EIO, 'k'}}) {
        int count = 0; // of the calls, known after the first round, in which none fails
        for (int nth = 0; nth <= count; ++nth) {
            fs::remove("second_name");
            write_file(file, old_text);
            fs::create_hard_link(file, "second_name");
            const std::string answer = run_in_child([&, error = error, later = later] {
                int made = 0;
                std::string kind;
                calls::error_for = [&](const std::string &call) {
                    if (++made == nth)
                        kind = kind_of(call);
                    bool is_later = nth > 0 && made > nth && later != 0;
                    return made == nth || (is_later && (later == 'a' || kind_of(call) == kind))
                               ? error
                               : 0;
                };
                std::string lines = std::to_string(vorn_sav_cfg());
                calls::error_for = nullptr;
                return lines + drain_output() + "\n" + std::to_string(made);
            });
            SCOPED_TRACE(std::to_string(nth) + strerror(error) + answer);
            const std::string text = read_file(file);
            if (nth == 0) {
                count = std::stoi(answer.substr(answer.rfind('\n') + 1));
                new_text = text;
            }
            if (answer.find("is kept in file " + path_of(copy)) != answer.npos)
                EXPECT_EQ(read_file(copy), old_text);
            else if (answer[0] == '1')
                EXPECT_EQ(text, new_text);
            else
                EXPECT_TRUE((text == old_text || text == new_text) && answer.size() > 5);
            fs::remove(copy);
        }
        EXPECT_GT(count, 20);
    }
}

// Some file systems cannot rename without replacing, and some have no links.
TEST_F(Durability, ARenameNeverReplacesAFile)
{
    for (int link_error : {0, EPERM}) {
        write_file("old", "old");
        write_file("there", "there");
        fs::remove("new");
        bool has_linked = false;
        calls::error_for = [&](const std::string &call) {
            has_linked = has_linked || call.starts_with("link ");
            return call.starts_with("link ")                    ? link_error
                   : call.starts_with("rename ") && !has_linked ? EINVAL
                                                                : 0;
        };
        EXPECT_EQ(vorn_vek_rename_file(Buffer("old"), Buffer("there")), 1);
        has_linked = false;
        EXPECT_EQ(vorn_vek_rename_file(Buffer("old"), Buffer("new")), 0);
        EXPECT_EQ(read_file("there") + read_file("new") + read_file("old"), "thereold");
    }
}

// Two sessions start at the same time, and each creates the directories.
TEST_F(Durability, ADirectoryThatAnotherProcessCreatesIsUsed)
{
    calls::error_for = [](const std::string &call) {
        std::error_code none;
        return call.starts_with("mkdir ") && fs::create_directory(call.substr(6), none) ? EEXIST
                                                                                        : 0;
    };
    EXPECT_EQ(vorn_vek_db_add("new", "new.vek", 1) + vorn_cre_dat("newer.vek"), 0);
    EXPECT_EQ(drain_output(),
              "> ERROR: Error: Cannot create directory newer.vek\n"); // must not exist
    EXPECT_EQ(listing("new.vek"), (Lines{"dampers.tbl", "springs.tbl"}));
    fs::remove_all("new.vek/dampers.tbl");
    write_file("new.vek/dampers.tbl"); // in the way
    EXPECT_EQ(vek_upd_vek_tbls(1), 1);
    EXPECT_EQ(host::printed().size(), 3u);
}

// A child shares the file offsets of its parent, and copies the buffers of its streams.
TEST_F(Durability, AnExitingChildChangesNothing)
{
    std::string lines;
    for (int i = 0; i < 500; ++i)
        lines += "! line " + std::to_string(i) + "\n";
    host::when_print = [](const char *) {
        pid_t child = fork();
        if (child == 0)
            exit(0);
        waitpid(child, nullptr, 0);
    };
    write_file(file, lines + "DATABASE\n" + lines + "TESTRIG rig last\n");
    EXPECT_EQ(vek_cfg_read(file, 1), 1);
    EXPECT_EQ(host::printed().size(), 3u);
    EXPECT_STREQ(vorn_vek_get_def_testrig("rig"), "last");
    EXPECT_EQ(vorn_vek_db_add("x!y", "new.vek", 1), 0);
    EXPECT_EQ(read_file(file), lines + "DATABASE\n" + lines + "TESTRIG rig last\n");
}

static std::string open_streams;
TEST_F(Durability, FilesDoNotGetTheDescriptorsOfClosedStreams)
{
    make_dir(backup);
    host::when_print = [](const char *) {
        for (int stream : {0, 1, 2})
            open_streams += fcntl(stream, F_GETFD) == -1 ? "" : std::to_string(stream);
    };
    for (const char *table : {"a a.tbl a", "b b.tbl b", "c c.tbl c"})
        add_table(table);
    EXPECT_EQ(run_in_child([] {
                  for (int stream : {0, 1, 2})
                      close(stream);
                  return std::to_string(vorn_wrt_cfg("x", nullptr)) +
                         std::to_string(vorn_vek_db_add("new", "new.vek", 1)) + open_streams;
              }),
              "10");
    EXPECT_EQ(listing("new.vek").size(), 5u);
}

// Run an operation as a user who is not root, if this process is root.
static std::string as_other_user(const std::function<std::string()> &operation)
{
    return run_in_child([&] {
        if (geteuid() == 0 && seteuid(other_user) != 0)
            return std::string("still root");
        std::string answer = operation();
        calls::error_for = nullptr;
        return seteuid(getuid()) == 0 ? answer : "not root again"; // to write coverage data
    });
}

TEST_F(Durability, FilesOfOtherUsersInASharedDirectoryAreNotTrusted)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can create files of several users";
    auto probe = [](const char *dir) {
        return as_other_user([dir] { return std::to_string(vek_dir_is_writable(dir)); });
    };
    const std::string name = "common" + std::string(probe_file);
    fs::permissions(home, fs::perms(0755));
    make_dir("common");
    for (auto [mode, is_writable] : {std::pair(0777u, "1"), {01777u, "1"}, {0755u, "0"}})
        for (const char *kind : {"file", "pipe", "dir", "link"}) {
            fs::permissions("common", fs::perms(mode));
            fs::remove_all(name);
            if (*kind == 'f')
                write_file(name, "of root's");
            else if (*kind == 'p')
                make_pipe(name);
            else if (*kind == 'd')
                make_dir(name);
            else
                fs::create_hard_link(file, name);
            fs::permissions(name, fs::perms(0600));
            EXPECT_EQ(probe("common"), is_writable) << mode << kind;
        }
    EXPECT_EQ(vek_dir_is_writable("common"), 1);
    EXPECT_EQ(read_file(file), private_cfg); // which had the name of the probe file
    write_file(name);
    fs::permissions(name, fs::perms(0666));
    EXPECT_EQ(probe("common"), "1"); // though nothing can be created there
    fs::remove(name);
    calls::error_for = [](const std::string &call) {
        return call.ends_with(probe_file) ? EACCES : 0;
    };
    EXPECT_EQ(vek_dir_is_writable("common"), 0); // refused by a file server
    calls::error_for = nullptr;
    // A symbolic link at the path of the backup is neither followed nor replaced.
    write_file("victim", "a victim");
    fs::permissions("victim", fs::perms(0666));
    fs::permissions("common", fs::perms(01777));
    write_file("common/my.cfg", private_cfg);
    EXPECT_EQ(chown("common/my.cfg", other_user, other_user), 0);
    fs::create_symlink(path_of("victim"), "common/my.cfq");
    set_env("KLV_VORN_PRIVATE_CFG", "common/my.cfg");
    EXPECT_EQ(as_other_user(update_with_lines),
              "1> ERROR: Cannot create file 'file://common/my.cfq' : Operation not permitted\n");
    EXPECT_EQ(read_file("victim"), "a victim");
    EXPECT_EQ(listing("common"), (Lines{"my.cfg", "my.cfq"}));
    // Nor is another user's copy taken for one of the library's.
    write_file(".vorn.cfg.vek-previous", "another's");
    EXPECT_EQ(chown(".vorn.cfg.vek-previous", other_user, other_user), 0);
    set_env("KLV_VORN_PRIVATE_CFG", file);
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    set_env("KLV_VORN_PRIVATE_CFG", "common/my.cfg");

    // An update by root keeps the owner of the file.
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    struct stat status;
    EXPECT_EQ(stat("common/my.cfg", &status), 0);
    EXPECT_EQ(status.st_uid, other_user);
    host::printed();

    // If nothing can be created in the directory, the file is overwritten.
    fs::permissions("common", fs::perms(0755));
    EXPECT_EQ(as_other_user(update_with_lines),
              "1> ERROR: Cannot create file 'file://common/my.cfq' : Permission denied\n");
    EXPECT_NE(read_file("common/my.cfg"), private_cfg);

    // After a failure, the next update reports the copy again.
    write_file("common/my.cfg", private_cfg);
    static const std::string kept =
        "The previous text is kept in file /var/tmp/.vek-previous-65534-";
    const std::string lines = as_other_user([] {
        calls::error_for = [](const std::string &call) {
            return call.starts_with("ftruncate ") && call.ends_with("my.cfg") ? EIO : 0;
        };
        return update_with_lines();
    });
    const size_t pos = lines.find(kept);
    ASSERT_NE(pos, lines.npos) << lines;
    EXPECT_NE(as_other_user(update_with_lines).find(kept), lines.npos);
    const std::string copy = lines.substr(pos + 34, lines.rfind('.') - pos - 34);
    EXPECT_EQ(read_file(copy), private_cfg);
    fs::remove(copy);
}

// A default access list of the directory would give others access to new files.
TEST_F(Durability, NewFilesAreAsPrivateAsTheOldOne)
{
    const unsigned char list[] = {2, 0,   0,   0,   1,   0,   6,  0, 255, 255, 255, 255, 2,   0,  4,
                                  0, 254, 255, 0,   0,   4,   0,  4, 0,   255, 255, 255, 255, 16, 0,
                                  4, 0,   255, 255, 255, 255, 32, 0, 0,   0,   255, 255, 255, 255};
    if (setxattr(home.c_str(), "system.posix_acl_default", list, sizeof list, 0) != 0)
        GTEST_SKIP() << "this file system has no access lists";
    setxattr(file, "system.posix_acl_access", list, sizeof list, 0);
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    EXPECT_GT(getxattr(file, "system.posix_acl_access", nullptr, 0), 0);
    removexattr(file, "system.posix_acl_access");
    fs::permissions(file, fs::perms(0640));
    EXPECT_EQ(vorn_wrt_cfg("x", nullptr), 1);
    for (const char *name : {file, backup}) {
        EXPECT_EQ(getxattr(name, "system.posix_acl_access", nullptr, 0), -1) << name;
        EXPECT_EQ(fs::status(name).permissions(), fs::perms(0640)) << name;
    }
}
