// kpathsea: a file is looked for in the table's directory of each database.

#include "../measure.h"
#include "../parts.h"

extern "C" {
#include <kpathsea/kpathsea.h>
}

#include <unistd.h>

void add_kpathsea(const tree &made)
{
    setenv("TEXMFCNF", made.home.c_str(), 1);
    static kpathsea library = kpathsea_new();
    fclose(fopen((made.home + "/texmf.cnf").c_str(), "w")); // else it warns
    kpathsea_set_program_name(library, "/proc/self/exe", "vek_bench");
    add_measure(made, "level walk, miss/kpathsea", [](const sample &one) {
        std::string file = "trial_7." + one.ext;
        free(kpathsea_path_search(library, one.directories.c_str(), file.c_str(), 0));
    });
}
