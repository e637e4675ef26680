// kpathsea: searches the table's directory of each database for a file.

#include "peers.h"

extern "C" {
#include <kpathsea/kpathsea.h>
}

#include <unistd.h>

static kpathsea library;

void kpathsea_start(const tree &made)
{
    setenv("TEXMFCNF", made.home.c_str(), 1);
    library = kpathsea_new();
    fclose(fopen((made.home + "/texmf.cnf").c_str(), "w")); // else it warns
    kpathsea_set_program_name(library, "/proc/self/exe", "vek_bench");
    // The first search reads the configuration, and ignores the rest of its search path.
    kpathsea_path_search(library, made.home.c_str(), "none", 0);
}

bool kpathsea_walk(const sample &one)
{
    std::string file = "trial_7." + one.ext;
    return kpathsea_path_search(library, one.directories.c_str(), file.c_str(), 0) == nullptr;
}
