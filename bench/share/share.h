// A share: a directory that is accessed through a FUSE file system, which counts and
// delays the requests of the kernel.

#pragma once

#include <atomic>
#include <map>
#include <string>
#include <sys/types.h>

// The requests that are counted, by the kernel's opcode.  Opcodes are below 64.
extern const std::map<unsigned, const char *> request_names;

// In memory that the server shares with the measured processes.
struct share_state {
    std::atomic<pid_t> client;     // the process whose requests count
    std::atomic<int> delay;        // of each request, in microseconds
    std::atomic<unsigned> listing; // maximum size of a reply to a listing, in bytes
    std::atomic<int> counts[64];
    std::atomic<double> seconds; // set by the measured process
};

struct share {
    share_state *state;
    std::string dir;
    int link; // to the server, which unmounts and exits once all copies are closed
    pid_t server;
};

// Mount a share over a directory, with an empty cache and all counts at zero.  Until it is
// unmounted, the directory can be accessed only through the share.  Returns false if it
// cannot be mounted.
bool mount_share(share *mounted, const std::string &dir);
void unmount_share(share *mounted);

// Serve the directory until the other end of the link is closed.  Runs in the server.
// Writes a byte to the link once the share is mounted.
int serve_share(const std::string &dir, share_state *state, int link);
