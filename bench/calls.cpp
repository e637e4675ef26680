// A start and some searches, once each, to be traced by strace.

#include "tree.h"

#include "vek.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

// A system call that marks the beginning of the named part in the trace.
static void mark(const char *part)
{
    access((std::string("/mark/") + part).c_str(), F_OK);
}

void run_calls_once(const tree &made, bool is_cold)
{
    const sample &one = made.samples[made.samples.size() / 2];
    int null_device = open("/dev/null", O_WRONLY);
    dup2(null_device, STDOUT_FILENO);
    if (is_cold)
        remove_table_dirs(made);
    mark(is_cold ? "cold start" : "warm start");
    vorn_vek_cfg_env_read("");
    if (!is_cold) {
        mark("search, hit");
        search(one, one.alias);
        mark("search, miss");
        search(one, one.missing_alias);
        setenv("KLV_VEK_SEARCH", "yes", 1);
        mark("level walk, miss");
        search(one, one.missing_alias);
    }
    mark("end");
}
