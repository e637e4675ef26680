// A share: a directory that is reached through a file system of ours, which
// counts and delays what the kernel asks a file server for.

#pragma once

#include <atomic>
#include <map>
#include <string>
#include <sys/types.h>

// The requests that are counted, by the kernel's numbers, which are below 64.
extern const std::map<unsigned, const char *> request_names;

// In memory that the server's process shares with those that measure.
struct share_state {
    std::atomic<pid_t> client;     // the process whose requests count
    std::atomic<int> delay;        // of each request, in microseconds
    std::atomic<unsigned> listing; // bytes of a reply to a listing, at most
    std::atomic<int> counts[64];
    std::atomic<double> seconds; // left by the process that measures
};

struct share {
    share_state *state;
    std::string dir;
    int link; // to the server, which unmounts and ends when no process holds it any more
    pid_t server;
};

// Mount a share over a directory, with nothing cached and nothing counted; false
// where that can't be done.  Until it is unmounted again the directory is reached
// through the share alone.
bool mount_share(share *mounted, const std::string &dir);
void unmount_share(share *mounted);

// The server's part: serve the directory until the other end of the link is
// closed.  A byte is written to the link once the share is mounted.
int serve_share(const std::string &dir, share_state *state, int link);
