// vek_share DATABASES TABLES DELAY [LISTING] - count the requests of each measure on a
// tree of that size whose databases lie on a share, and time the measure while each
// request is delayed by DELAY milliseconds.  A reply to a listing has at most LISTING
// bytes; the default is the size that the kernel requests.  Configuration files, HOME
// and temporary files are on the local disk.  A line of the output is
//
//     measure/who: 46 requests: 25 LOOKUP, 21 GETATTR; 0.0123 s
//
// Each measure has its own tree, mount and process, so that only its preparation fills
// the cache.  If no FUSE file system can be mounted, the exit status is 77.

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

// Runs in the measured process, which dies with its parent.  Its output is discarded.
static bool run(const measure &one, const tree &made, const share &mounted, server_limits limits)
{
    share_state *state = mounted.state;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    close(mounted.link);
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    setenv("TMPDIR", made.home.c_str(), 1); // removed with the tree
    state->listing = limits.listing;
    one.prepare(made);
    state->delay = limits.delay * 1000;
    state->client = getpid();
    auto begin = steady_clock::now();
    bool has_succeeded = one.run(made);
    state->seconds = std::chrono::duration<double>(steady_clock::now() - begin).count();
    state->client = 0;
    state->delay = 0;
    return has_succeeded;
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
    bool has_succeeded = run_in_child(one, made, mounted, limits);
    unmount_share(&mounted);
    has_succeeded = has_succeeded && one.has_succeeded(made);
    if (has_succeeded)
        print(one, mounted.state);
    return has_succeeded;
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

int main(int count, char **arguments)
{
    if (count != 4 && count != 5) {
        fprintf(stderr, "usage: %s DATABASES TABLES DELAY [LISTING]\n", arguments[0]);
        return 2;
    }
    if (!can_mount()) {
        fprintf(stderr, "No FUSE file system can be mounted here\n");
        return exit_skipped;
    }
    const server_limits limits = {
        atoi(arguments[3]), count == 5 ? static_cast<unsigned>(atoi(arguments[4])) : UINT_MAX};
    for (const measure &one : measures) {
        fprintf(stderr, "%s x %s, %s ms: %s\n", arguments[1], arguments[2], arguments[3], one.name);
        const tree made = make_tree(temporary_directory(), atoi(arguments[1]), atoi(arguments[2]),
                                    share_subdirectory);
        bool has_succeeded = measure_on(made, one, limits);
        remove_tree(made);
        if (!has_succeeded) {
            fprintf(stderr, "The measure failed\n");
            return 1;
        }
    }
    return 0;
}
