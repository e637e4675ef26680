// What is left of a session and of its files when memory runs out, or the system
// refuses a call or kills the process, wherever that happens.

#include "files/files.h"
#include "support/child.h"
#include "support/failing_malloc.h"
#include "support/scratch.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sys/syscall.h>

static const char file[] = ".vorn.cfg";
static const char backup[] = ".vorn.cfq";

enum kind_of_operation { UPDATE, COPY, OTHER };

class Faults : public Scratch {
  protected:
    void expect_no_fault(const std::function<std::string()> &operation, const std::string &name,
                         kind_of_operation kind);
    int count = 0;
};

// Each process has a directory of its own for its copy.
static std::string path_of_copy()
{
    for (const std::string &name : listing("."))
        if (name.starts_with("vek-") && std::filesystem::exists(name + "/tmp_cfg_file"))
            return name + "/tmp_cfg_file";
    return "none";
}

static bool is_told(const std::string &answer)
{
    for (const char *word : {"ERROR", "WARNING", "ABORT"})
        if (answer.find(word) != answer.npos)
            return true;
    return false;
}

// Whatever is refused, the private file has its old text or the new one as the
// result says, or the user is told where the old one is.
static std::string loss_in(const std::string &answer, const std::string &old,
                           const std::string &fresh)
{
    const std::string text = read_file(file), copy = path_of_copy();
    if (answer == "killed")
        return text == old || text == fresh || read_file(backup) == old || read_file(copy) == old
                   ? ""
                   : "lost by a kill";
    if (!is_told(answer))
        return text == fresh ? "" : "not told";
    if (text == old || text == fresh)
        return "";
    bool is_kept = read_file(copy) == old && answer.find("/" + copy + ".\n") != answer.npos;
    return is_kept ? "" : "lost by a refusal";
}

static const std::string source = xs(5000);
static std::string old_text;

static void prepare()
{
    for (const std::string &name : listing("."))
        if (name != "inst")
            std::filesystem::remove_all(name);
    make_dir("private.vek/dampers.tbl");
    make_dir("shared.vek");
    write_file("source.dpr", source);
    write_file("target.dpr", "target");
    if (!old_text.empty())
        write_file(file, old_text);
}

// All files and directories, but the copy of an update, of which others tell, and
// a probe file that could not be removed.
static Lines world()
{
    Lines all;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(".")) {
        const std::string path = entry.path();
        if (!path.starts_with("./vek-") && !path.ends_with(probe_file))
            all.push_back(path + ": " + (entry.is_directory() ? "" : read_file(path)));
    }
    std::sort(all.begin(), all.end());
    return all;
}

// Refuses each system call of an operation with each error.  One whose first line
// is that of success and that tells of nothing must have done all.  Only copying
// does not look at what it reads and writes.
void Faults::expect_no_fault(const std::function<std::string()> &operation, const std::string &name,
                             kind_of_operation kind)
{
    prepare();
    const std::string good = in_child(operation), fresh = read_file(file);
    const size_t width = good.find('\n') + 1;
    const Lines done = world();
    EXPECT_FALSE(is_told(good)) << good;
    prepare();
    const std::vector<long> calls = system_calls(operation);
    for (int nth = 1; nth <= (int)calls.size(); ++nth) {
        const long call = calls[nth - 1];
        std::vector<fault> wishes;
        for (int error : errors_of(call))
            wishes.push_back({nth, error, false});
        if (kind == UPDATE)
            wishes.insert(wishes.end(), {{nth, 0, false}, {nth, ENOSPC, true}});
        for (const fault &wish : wishes) {
            prepare();
            std::string answer = run_with_fault(wish, operation);
            bool may_be_cut =
                kind == COPY && (call == SYS_write || (call == SYS_read && wish.error != EINTR));
            bool must_be_done =
                answer.compare(0, width, good, 0, width) == 0 && !is_told(answer) && !may_be_cut;
            SCOPED_TRACE(name + ": " + std::to_string(nth) + ", call " + std::to_string(call) +
                         ", " + strerror(wish.error) + ": " + answer);
            EXPECT_EQ(kind == UPDATE ? loss_in(answer, old_text, fresh) : "", "");
            EXPECT_TRUE(wish.error == 0 || answer != "killed");
            EXPECT_EQ(answer.find(" became "), answer.npos);
            EXPECT_TRUE(!must_be_done || world() == done);
            ++count;
        }
    }
    EXPECT_GT(count, 3);
}

struct row {
    const char *name;
    int (*run)();
};

static std::string answer_of(const row &now)
{
    std::string result = std::to_string(now.run());
    return result + "\n" + said();
}

TEST_F(Faults, AnUpdateLosesNothingWhateverTheSystemRefuses)
{
    set("SET", "a value");
    start_session();
    host::printed();
    set("TMPDIR", home);
    old_text = "ENVIRONMENT SET x\nENVIRONMENT UNSET x\nDATABASE goes x\n"
               "DEFAULT_WRITE_DB x\n" +
               xs(5000) + "\n";
    for (const row &now : {row{"update", [] { return vorn_wrt_cfg("vorn_vek_db_add", "private"); }},
                           {"overwrite", [] { return host::answer = 1, vorn_sav_cfg(); }},
                           {"save", [] { return host::answer = 2, vorn_sav_cfg(); }}})
        expect_no_fault([&] { return answer_of(now); }, now.name, UPDATE);
    printf("%d system calls refused\n", count);
}

TEST_F(Faults, AnOperationTellsWhateverTheSystemRefuses)
{
    start_session();
    host::printed();
    old_text = private_cfg;
    for (const row &now :
         {row{"copy",
              [] { return vorn_vek_copy_file2file(Text("source.dpr"), Text("target.dpr")); }},
          {"copy to", [] { return vorn_vek_copy_file2db(Text("source.dpr"), "private"); }},
          {"append", [] { return vorn_vek_append_file2file("source.dpr", "target.dpr"); }},
          {"backup", [] { return vek_backup_file(Text("source.dpr")); }}})
        expect_no_fault([&] { return answer_of(now); }, now.name, COPY);
    for (const row &now :
         {row{"rename", [] { return vorn_vek_rename_file(Text("source.dpr"), Text("new.dpr")); }},
          {"delete", [] { return vorn_vek_delete_file(Text("source.dpr")); }},
          {"new", [] { return vorn_cre_dat("new.vek"); }},
          {"add", [] { return vorn_vek_db_add("new", "new.vek", 1); }}})
        expect_no_fault([&] { return answer_of(now); }, now.name, OTHER);
    printf("%d system calls refused\n", count);
}

TEST_F(Faults, AStartTellsWhateverTheSystemRefuses)
{
    set("KLV_VORN", "inst");
    write_file("inst/vorn.cfg", shared_cfg);
    old_text = "ENVIRONMENT A b\n" + private_cfg;
    for (const char *kind : {"start", "first start"}) {
        expect_no_fault(
            [] {
                set_product("vorn");
                vek_set_interface_mode();
                std::string answer = std::to_string(vorn_vek_cfg_env_read(""));
                for (const std::string &row : databases())
                    answer += ";" + row;
                return answer + "\n" + said();
            },
            kind, OTHER);
        old_text.clear();
    }
    printf("%d system calls refused\n", count);
}
