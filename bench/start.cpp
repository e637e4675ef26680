// The start of a session.  A process starts one session only, so each sample runs in a
// child process, which takes the time itself.  The baseline and the minimum do the same.

#include "parts.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using std::chrono::steady_clock;

// The baseline of a directory test: change to the directory and back.
static bool test_call_by_call(const char *path)
{
    char here[260];
    return getcwd(here, sizeof here) != nullptr && chdir(path) == 0 && chdir(here) == 0;
}

// The minimum: looking up "." at the end of the path needs search permission.
static bool test_by_stat(const std::string &path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0;
}

static void probe(const std::string &file)
{
    close(open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666));
    unlink(file.c_str());
}

// Formed before the time is taken.
struct start_paths {
    std::vector<std::string> databases, tables, database_stat_paths, table_stat_paths, probes;
};

static start_paths form_paths(const tree &made)
{
    start_paths paths = {made.database_dirs, made.table_dirs, {}, {}, {}};
    for (const std::string &path : made.database_dirs) {
        paths.database_stat_paths.push_back(path + "/.");
        paths.probes.push_back(path + "/tmp_bedwvorn.txt");
    }
    for (const std::string &path : made.table_dirs)
        paths.table_stat_paths.push_back(path + "/.");
    return paths;
}

static bool start_call_by_call(const start_paths &paths)
{
    bool is_good = true;
    for (size_t i = 0; i < paths.databases.size(); ++i) {
        is_good &= test_call_by_call(paths.databases[i].c_str());
        probe(paths.probes[i]);
    }
    for (const std::string &path : paths.tables)
        is_good &= test_call_by_call(path.c_str()) || mkdir(path.c_str(), 0777) == 0;
    return is_good;
}

static bool start_by_stat(const start_paths &paths)
{
    bool is_good = true;
    for (size_t i = 0; i < paths.databases.size(); ++i) {
        is_good &= test_by_stat(paths.database_stat_paths[i]);
        probe(paths.probes[i]);
    }
    for (size_t i = 0; i < paths.tables.size(); ++i)
        is_good &=
            test_by_stat(paths.table_stat_paths[i]) || mkdir(paths.tables[i].c_str(), 0777) == 0;
    return is_good;
}

// Returns the seconds that the work takes in a child, or a negative number if it fails.
template <typename Work> static double time_in_child(const Work &work)
{
    int ends[2];
    double seconds = -1;
    if (pipe(ends) != 0)
        return seconds;
    pid_t child = fork();
    if (child == 0) {
        auto begin = steady_clock::now();
        if (work())
            seconds = std::chrono::duration<double>(steady_clock::now() - begin).count();
        _exit(write(ends[1], &seconds, sizeof seconds) == sizeof seconds ? 0 : 1);
    }
    close(ends[1]);
    if (read(ends[0], &seconds, sizeof seconds) != sizeof seconds)
        seconds = -1;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return seconds;
}

template <typename Work>
static void add(const tree &made, const char *name, bool is_cold, const Work &work)
{
    auto measure = [&made, is_cold, work](benchmark::State &state) {
        for (auto _ : state) {
            if (is_cold)
                remove_table_dirs(made);
            double seconds = time_in_child(work);
            if (seconds < 0)
                state.SkipWithError("failed");
            state.SetIterationTime(seconds);
        }
    };
    const size_t count = std::clamp<size_t>(200000 / made.table_dirs.size(), 5, 101);
    benchmark::RegisterBenchmark(name, measure)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(static_cast<int>(count));
}

void add_start(const tree &made)
{
    static const start_paths paths = form_paths(made);
    add(made, "warm start/vek", false, start_session);
    add(made, "warm start/minimum", false, [] { return start_by_stat(paths); });
    add(made, "warm start/baseline", false, [] { return start_call_by_call(paths); });
    add(made, "cold start/vek", true, start_session);
    add(made, "cold start/minimum", true, [] { return start_by_stat(paths); });
    add(made, "cold start/baseline", true, [] { return start_call_by_call(paths); });
}
