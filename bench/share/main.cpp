// vek_share DATABASES TABLES DELAY [LISTING] - the requests that each measure takes on
// a tree of that size whose databases lie on a share, and how long it takes when each
// request is delayed by so many milliseconds.  A reply to a listing has at most
// LISTING bytes, or as many as the kernel asks for.  Configuration files, HOME and
// temporary files are on the local disk.  A line of the output is
//
//     measure/who: 46 requests: 25 LOOKUP, 21 GETATTR; 0.0123 s
//
// A measure has a tree, a mount and a process of its own, so that nothing is cached
// before but what its preparation brings.  Where no FUSE file system can be mounted,
// the exit status is 77.

#include "measures.h"
#include "share.h"

#include <chrono>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using std::chrono::steady_clock;

constexpr int exit_skipped = 77;

struct server_limits {
    int delay;
    unsigned listing;
};

// In the measured process, which outlives no other and whose lines are not shown.
static bool run(const measure &one, const tree &made, const share &mounted, server_limits limits)
{
    share_state *state = mounted.state;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    close(mounted.link);
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    setenv("TMPDIR", made.home.c_str(), 1); // all that is left goes with the tree
    state->listing = limits.listing;
    one.prepare(made);
    state->delay = limits.delay * 1000;
    state->client = getpid();
    auto begin = steady_clock::now();
    bool has_worked = one.run(made);
    state->seconds = std::chrono::duration<double>(steady_clock::now() - begin).count();
    state->client = 0;
    state->delay = 0;
    return has_worked;
}

static bool run_in_child(const measure &one, const tree &made, const share &mounted,
                         server_limits limits)
{
    int result = 1;
    pid_t child = fork();
    if (child == 0)
        _exit(run(one, made, mounted, limits) ? 0 : 1);
    return child > 0 && waitpid(child, &result, 0) == child && result == 0;
}

static void print(const measure &one, const share_state *state)
{
    std::string kinds;
    int total = 0;
    for (auto [number, name] : request_names) {
        const int count = state->counts[number];
        total += count;
        if (count > 0)
            kinds += (kinds.empty() ? ": " : ", ") + std::to_string(count) + " " + name;
    }
    printf("%s: %d requests%s; %.6f s\n", one.name, total, kinds.c_str(), state->seconds.load());
    fflush(stdout);
}

static bool measure_on(const tree &made, const measure &one, server_limits limits)
{
    share mounted;
    one.arrange(made);
    if (!mount_share(&mounted, made.home + share_subdirectory))
        return false;
    bool has_worked = run_in_child(one, made, mounted, limits);
    unmount_share(&mounted);
    has_worked = has_worked && one.has_worked(made);
    if (has_worked)
        print(one, mounted.state);
    return has_worked;
}

static bool can_mount()
{
    share mounted;
    const std::string dir = temporary_directory();
    bool is_mounted = mount_share(&mounted, dir);
    if (is_mounted)
        unmount_share(&mounted);
    rmdir(dir.c_str());
    return is_mounted;
}

int main(int count, char **words)
{
    if (count != 4 && count != 5) {
        fprintf(stderr, "usage: %s DATABASES TABLES DELAY [LISTING]\n", words[0]);
        return 2;
    }
    if (!can_mount()) {
        fprintf(stderr, "No FUSE file system can be mounted here\n");
        return exit_skipped;
    }
    const server_limits limits = {atoi(words[3]),
                                  count == 5 ? static_cast<unsigned>(atoi(words[4])) : UINT_MAX};
    for (const measure &one : measures) {
        fprintf(stderr, "%s x %s, %s ms: %s\n", words[1], words[2], words[3], one.name);
        const tree made =
            make_tree(temporary_directory(), atoi(words[1]), atoi(words[2]), share_subdirectory);
        bool has_worked = measure_on(made, one, limits);
        remove_tree(made);
        if (!has_worked) {
            fprintf(stderr, "It went wrong\n");
            return 1;
        }
    }
    return 0;
}
