// Mounting a share.  The server is a child process.  It unmounts the share and exits when
// the link to it is closed, so nothing is left however this process ends.

#include "share.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <new>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

// The mounts of the process use the same memory, one at a time.
static share_state *new_state()
{
    static void *const memory = mmap(nullptr, sizeof(share_state), PROT_READ | PROT_WRITE,
                                     MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : new (memory) share_state();
}

// Signals from the terminal reach the server, too.  Only its link may end it.
static void run_server(const share *mounted, int link)
{
    for (int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE})
        signal(number, SIG_IGN);
    close(mounted->link);
    _exit(serve_share(mounted->dir, mounted->state, link));
}

bool mount_share(share *mounted, const std::string &dir)
{
    int ends[2];
    char mark;
    *mounted = {new_state(), dir, -1, -1};
    if (mounted->state == nullptr || socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0)
        return false;
    mounted->link = ends[0];
    mounted->server = fork();
    if (mounted->server == 0)
        run_server(mounted, ends[1]);
    close(ends[1]);
    if (mounted->server > 0 && read(mounted->link, &mark, 1) == 1)
        return true;
    unmount_share(mounted);
    return false;
}

// A server that was killed leaves a mount without a server.
static void unmount_unserved(const std::string &dir)
{
    int opened = open(dir.c_str(), O_RDONLY | O_DIRECTORY);
    if (opened < 0 && errno == ENOTCONN)
        (void)!system(("fusermount3 -u -q -z '" + dir + "'").c_str());
    close(opened);
}

void unmount_share(share *mounted)
{
    close(mounted->link);
    if (mounted->server > 0)
        waitpid(mounted->server, nullptr, 0);
    unmount_unserved(mounted->dir);
}
