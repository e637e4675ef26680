// The operations in memory, to be counted by callgrind.  Each runs once over all samples,
// and its counts are dumped under its name.  The path of the tree is relative, so that
// it is the same everywhere: the counts of comparing paths depend on it.

#include "tree.h"

#include "vek.h"

#include <cstdio>
#include <filesystem>
#include <valgrind/callgrind.h>

using operation = void (*)(const sample &one);

static const struct {
    const char *name;
    operation run;
} operations[] = {
    {"name to path", [](const sample &one) { vorn_vek_input2full(text(one.alias)); }},
    {"path to alias", [](const sample &one) { vorn_vek_path2alias(text(one.path)); }},
    {"class to extension", [](const sample &one) { vorn_vek_class2ext(text(one.file_class)); }},
    {"extension to path", [](const sample &one) { vorn_vek_ext2path(text(one.ext), one.level); }},
    {"name to level", [](const sample &one) { vorn_vek_db2level(text(one.database)); }},
};

int main()
{
    std::filesystem::remove_all("tree");
    std::filesystem::create_directory("tree");
    const tree made = make_tree("tree", 20, 200);
    if (!start_session())
        return 1;
    for (auto [name, run] : operations) {
        for (const sample &one : made.samples) // lazy binding at the first call does not count
            run(one);
        CALLGRIND_ZERO_STATS;
        for (const sample &one : made.samples)
            run(one);
        CALLGRIND_DUMP_STATS_AT(name);
    }
    return 0;
}
