// A session and its files survive a failure at any point: an allocation or a system call
// fails, or the process is killed.

#include "files/files.h"
#include "support/child.h"
#include "support/failing_malloc.h"
#include "support/fixture.h"
#include "text/text.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <sys/syscall.h>

static const char file[] = ".vorn.cfg";
static const char backup[] = ".vorn.cfq";
static std::string old_text;

enum kind_of_operation { UPDATE, UPDATES, COPY, START, OTHER };

class Faults : public TempDirTest {
  protected:
    void expect_no_fault(const std::function<std::string()> &operation, const std::string &name,
                         kind_of_operation kind);
    int count = 0; // of the faults
};

static bool is_reported(const std::string &answer)
{
    for (const char *word : {"ERROR", "WARNING", "ABORT"})
        if (answer.find(word) != answer.npos)
            return true;
    return false;
}

// After any failure, the private file has its old text or the new one, and the result
// agrees with it.  Returns what is wrong.
static std::string loss_in(const std::string &answer, const std::string &old,
                           const std::string &new_text)
{
    const std::string text = read_file(file);
    if (answer != "killed" && answer[0] == '1')
        return text == new_text ? "" : "not written";
    if (answer != "killed" && !is_reported(answer))
        return "not reported";
    return text == old || text == new_text ? "" : "lost";
}

// After a killed update the next one works.
static void expect_next_update()
{
    const std::string text = read_file(file), kept = read_file(backup);
    EXPECT_TRUE(kept.empty() || kept == text || kept == old_text);
    EXPECT_EQ(run_in_child([] { return std::to_string(vorn_wrt_cfg("x", nullptr)); }), "1");
    EXPECT_EQ(read_file(backup), text);
    const std::string next = read_file(file);
    write_file(file, text);
    EXPECT_EQ(run_in_child([] { return std::to_string(vorn_wrt_cfg("x", nullptr)); }), "1");
    EXPECT_EQ(next, read_file(file)); // as after an update that was not killed
}

static const std::string source = repeat_x(5000);

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

// All files and directories, except for the temporary copy of an update, which other tests
// check, and for a probe file that could not be removed.
static Lines snapshot()
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

// Make each system call of an operation fail with each error.  An operation that returns
// success and reports nothing must have done everything.  Copying is the exception: it
// does not check its reads and writes.
void Faults::expect_no_fault(const std::function<std::string()> &operation, const std::string &name,
                             kind_of_operation kind)
{
    prepare();
    const std::string good = run_in_child(operation), new_text = read_file(file);
    const size_t size = good.find('\n') + 1;
    const Lines done = snapshot();
    EXPECT_FALSE(is_reported(good)) << good;
    prepare();
    const std::vector<long> calls = system_calls(operation);
    int considered = 0;
    for (int nth = 1; nth <= (int)calls.size(); ++nth) {
        std::vector<fault> faults;
        for (int error : kind == UPDATES ? std::vector<int>{} : errors_of(calls[(size_t)nth - 1]))
            faults.push_back({nth, error, false});
        if (kind == UPDATES)
            faults = {{nth, ENOSPC, true}, {nth, EINVAL, true}};
        if (kind == UPDATE || kind == START)
            faults.insert(faults.end(), {{nth, 0, false}, {nth, ENOSPC, true}});
        for (const fault &planted : faults) {
            if (++considered % sample_stride != 0)
                continue;
            long call;
            prepare();
            std::string answer = run_with_fault(planted, operation, &call);
            bool may_be_truncated =
                kind == COPY && (call == SYS_write || (call == SYS_read && planted.error != EINTR));
            bool must_be_done = answer.compare(0, size, good, 0, size) == 0 &&
                                !is_reported(answer) && !may_be_truncated;
            SCOPED_TRACE(name + ": " + std::to_string(nth) + ", call " + std::to_string(call) +
                         ", " + strerror(planted.error) + ": " + answer);
            EXPECT_EQ(kind <= UPDATES ? loss_in(answer, old_text, new_text) : "", "");
            if (answer == "killed" && kind == UPDATE)
                expect_next_update();
            EXPECT_TRUE(planted.error == 0 || answer != "killed");
            EXPECT_EQ(answer.find(" became "), answer.npos);
            EXPECT_TRUE(!must_be_done || snapshot() == done);
            // A new file is complete or missing.
            EXPECT_TRUE(!old_text.empty() || !std::filesystem::exists(file) ||
                        read_file(file) == new_text);
            ++count;
        }
    }
    EXPECT_GT(count, 3);
}

struct row {
    const char *name;
    int (*run)();
};

static std::string result_of(const row &step)
{
    std::string result = std::to_string(step.run());
    return result + "\n" + drain_output();
}

TEST_F(Faults, AnUpdateLosesNothingIfAnySystemCallFails)
{
    set_env("SET", "a value");
    start_session();
    host::printed();
    set_env("TMPDIR", home);
    old_text = "ENVIRONMENT SET x\nENVIRONMENT UNSET x\nDATABASE goes x\n"
               "DEFAULT_WRITE_DB x\n" +
               repeat_x(5000) + "\n";
    for (const row &step :
         {row{"update", [] { return vorn_wrt_cfg("vorn_vek_db_add", "private"); }},
          {"overwrite", [] { return host::answer = 1, vorn_sav_cfg(); }},
          {"save", [] { return host::answer = 2, vorn_sav_cfg(); }}})
        expect_no_fault([&] { return result_of(step); }, step.name, UPDATE);
    // The second update starts with what the first has left.
    const row again = {"again",
                       [] { return vorn_wrt_cfg("x", nullptr) * vorn_wrt_cfg("x", nullptr); }};
    expect_no_fault([&] { return result_of(again); }, again.name, UPDATES);
    printf("%d faults injected\n", count);
}

TEST_F(Faults, AnOperationReportsAnyFailedSystemCall)
{
    start_session();
    host::printed();
    old_text = private_cfg;
    for (const row &step :
         {row{"copy",
              [] { return vorn_vek_copy_file2file(Buffer("source.dpr"), Buffer("target.dpr")); }},
          {"copy to", [] { return vorn_vek_copy_file2db(Buffer("source.dpr"), "private"); }},
          {"append", [] { return vorn_vek_append_file2file("source.dpr", "target.dpr"); }},
          {"backup", [] { return vek_backup_file(Buffer("source.dpr")); }}})
        expect_no_fault([&] { return result_of(step); }, step.name, COPY);
    for (const row &step :
         {row{"rename",
              [] { return vorn_vek_rename_file(Buffer("source.dpr"), Buffer("new.dpr")); }},
          {"delete", [] { return vorn_vek_delete_file(Buffer("source.dpr")); }},
          {"new", [] { return vorn_cre_dat("new.vek"); }},
          {"add", [] { return vorn_vek_db_add("new", "new.vek", 1); }}})
        expect_no_fault([&] { return result_of(step); }, step.name, OTHER);
    printf("%d faults injected\n", count);
}

TEST_F(Faults, AStartReportsAnyFailedSystemCall)
{
    set_env("KLV_VORN", "inst");
    std::string tables; // enough for directories to be listed
    for (const char *name : {"a", "b", "c"})
        tables += std::string("TABLE ") + name + " " + name + ".tbl " + name + "\n";
    write_file("inst/vorn.cfg", shared_cfg + tables);
    old_text = "ENVIRONMENT A b\n" + private_cfg;
    for (const char *kind : {"start", "first start"}) {
        expect_no_fault(
            [] {
                set_product("vorn");
                vek_set_interface_mode();
                std::string answer = std::to_string(vorn_vek_cfg_env_read(""));
                for (const std::string &row : databases())
                    answer += ";" + row;
                return answer + "\n" + drain_output();
            },
            kind, START);
        old_text.clear();
        write_file("inst/vorn.cfg", shared_cfg);
    }
    printf("%d faults injected\n", count);
}

// What a user does in a session.
static const row session[] = {
    {"start", [] { return vorn_vek_cfg_env_read(""); }},
    {"start a plug-in", [] { return vorn_vek_cfg_env_read("plug"); }},
    {"search", [] { return (int)search(Buffer("<shared>/dampers.tbl/a.dpr")).size(); }},
    {"add", [] { return vorn_vek_db_add("mine", "mine.vek", 1); }},
    {"reject", [] { return vorn_vek_db_add("mine", repeat_x(260).c_str(), 1); }},
    {"reject a table", [] { return vek_tbl_read(("TABLE " + repeat_x(400) + " a b").c_str(), 0); }},
    {"database", [] { return add_database("fifth fifth.vek"); }},
    {"table", [] { return add_table("last last.tbl lst"); }},
    {"grown database", [] { return add_database("sixth sixth.vek"); }},
    {"default", [] { return vorn_vek_set_write_default("mine"); }},
    {"file",
     [] { return vorn_vek_set_def_propfile("spring", Buffer("<shared>/dampers.tbl/a.dpr")); }},
    {"rig", [] { return vorn_vek_set_def_testrig("spring", "rig"); }},
    {"back", [] { return vorn_vek_set_write_default("private"); }},
    {"remove", [] { return vorn_vek_db_remove("mine"); }},
    {"copy", [] { return vorn_vek_copy_file2db(Buffer("source.dpr"), "private"); }},
    {"report", [] { return vorn_vek_db_info("report") + vorn_vek_tbl_info("report"); }},
    {"new", [] { return vorn_cre_dat("new.vek"); }},
    {"save", [] { return host::answer = 2, vorn_sav_cfg(); }},
    {"start by the solver",
     [] {
         int length = 0, found = 0;
         F2C_DB_SEARCH(Buffer(""), 0, &length, &found, "<private>/dampers.tbl/source.dpr", 0, "");
         return found;
     }},
};

// Run a step and return its result, the state after it, and the lines printed.
constexpr char line_end = '\1', step_end = '\2';
static std::string run_step(const row &step)
{
    host::printed();
    std::string all = std::to_string(step.run());
    for (const char *name : {"damper", "spring"})
        all += std::string(" ") + vorn_vek_get_def_propfile(name) + " " +
               vorn_vek_get_def_testrig(name);
    const char *chosen = vorn_vek_get_write_default();
    all += chosen == nullptr ? "" : chosen;
    for (const std::string &db : databases())
        all += "; " + db;
    for (const std::string &line : host::printed())
        all += line_end + line;
    return all + step_end;
}

static Lines parts(const std::string &text, char end)
{
    Lines all;
    std::istringstream rest(text);
    for (std::string part; std::getline(rest, part, end);)
        all.push_back(part);
    return all;
}

// A session can continue after any failure.  Returns what does not work.
static std::string check_session()
{
    vorn_vek_init("vorn"); // for what the start may have missed
    std::string faults = vorn_vek_db_add("again", "again.vek", 1) == 0 ? "" : "add ";
    faults += vorn_vek_set_write_default("again") == 0 ? "" : "default ";
    faults += search(Buffer("<shared>/dampers.tbl/a.dpr")).empty() ? "search " : "";
    faults += vorn_vek_set_def_testrig("again", "rig") == 1 ? "" : "rig ";
    faults += vorn_vek_get_def_testrig("again") == std::string("rig") ? "" : "no rig ";
    faults += vorn_sav_cfg() == 1 ? "" : "save ";
    for (int level = 2; level <= number_of_veks; ++level)
        faults += db_at(level)->tbl_count == db_at(1)->tbl_count ? "" : "tables ";
    return faults.empty() ? "" : faults + drain_output();
}

// Run the whole session.  Returns its steps, the number of the step in which memory ran
// out, and what does not work afterwards.
static std::string run_session(int nth, bool persistent)
{
    std::string answer;
    int failing = -1, number = 0;
    fail_allocation(nth, persistent);
    for (const row &step : session) {
        answer += run_step(step);
        if (failing < 0 && has_failed())
            failing = number;
        ++number;
    }
    stop_failing();
    return answer + std::to_string(failing) + step_end + (nth > 0 ? check_session() : "");
}

// The state after a step: the text between its result and its lines.
static std::string state(const std::string &step)
{
    const size_t start = step.find(' ');
    return step.substr(start, step.find(line_end) - start);
}

static std::string result(const std::string &step)
{
    return step.substr(0, step.find(' '));
}

// A step without memory reports that, if there is memory for the report.  Otherwise its
// lines are the usual ones except for one, which is missing or truncated.
static bool is_reported(const Lines &lines, const Lines &good)
{
    for (const char *report : {"ABORT: malloc_failure", "Malloc failed.", "Cannot allocate memory",
                               "ERROR: cannot open file"})
        for (const std::string &line : lines)
            if (line.find(report) != line.npos)
                return true;
    const auto strange = std::count_if(lines.begin(), lines.end(), [&](const std::string &line) {
        return std::find(good.begin(), good.end(), line) == good.end();
    });
    return lines[0] == good[0] && (size_t)strange <= 1 &&
           lines.size() + 1 - (size_t)strange >= good.size();
}

TEST_F(Faults, ASessionContinuesIfAnyAllocationFails)
{
    set_env("KLV_VORN", "inst");
    set_env("KLV_VORN_SITE", "inst/site");
    std::string shared = shared_cfg;
    for (char name = 'a'; name <= 'v'; ++name)
        shared += std::string("TABLE ") + name + " tbl " + name + "\n";
    write_file("inst/vorn.cfg", shared);
    write_file("inst/site/vorn.cfg", "DATABASE site inst/site.vek\nENVIRONMENT C $HOME\n");
    old_text = "ENVIRONMENT A b\n" + private_cfg + "TESTRIG damper rig\n";
    host::plugin_list = "vorn:plug";
    auto run = [](int nth, bool persistent) {
        prepare();
        write_file("plug.cfg", "TABLE plug plugs.tbl plg\nTABLE x\nDATABASE private x\n");
        write_file("shared.vek/dampers.tbl/a.dpr");
        return parts(run_in_child([=] { return run_session(nth, persistent); }), step_end);
    };
    const Lines good = run(0, false);
    const size_t steps = std::size(session);
    ASSERT_EQ(good.size(), steps + 1);
    for (int nth = 1;; nth += sample_stride)
        for (bool persistent : {false, true}) {
            const Lines found = run(nth, persistent);
            ASSERT_GT(found.size(), steps) << nth << " " << found[0];
            const int failing = std::stoi(found[steps]);
            if (failing < 0) {
                printf("%d allocations failed\n", count);
                EXPECT_GT(nth, 50);
                return;
            }
            SCOPED_TRACE(std::to_string(nth) + (persistent ? " and all later ones: " : ": ") +
                         session[(size_t)failing].name);
            ++count;
            EXPECT_EQ(found.size(), steps + 1) << found.back();
            EXPECT_EQ(run_in_child([] { // the next session reads what was saved
                          set_product("vorn");
                          std::string result = std::to_string(vorn_vek_cfg_env_read(""));
                          std::string lines = drain_output();
                          return is_reported(lines) ? lines : result;
                      }),
                      "0");
            const Lines mine = parts(found[(size_t)failing], line_end);
            const Lines usual = parts(good[(size_t)failing], line_end);
            EXPECT_TRUE(persistent || is_reported(mine, usual)) << found[(size_t)failing];
            if (!std::string(session[(size_t)failing].name).starts_with("start")) {
                bool is_undone = state(mine[0]) == state(good[(size_t)failing - 1]);
                EXPECT_TRUE(mine[0] == usual[0] ||
                            (is_undone && result(mine[0]) != result(usual[0])))
                    << found[(size_t)failing];
            }
        }
}
