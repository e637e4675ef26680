// PhysicsFS: each database is mounted under its name, and asked which directory
// holds a file.

#include "../measure.h"
#include "../parts.h"

#include <physfs.h>

void add_physfs(const tree &made)
{
    PHYSFS_init(nullptr);
    for (size_t i = 0; i < made.names.size(); ++i)
        PHYSFS_mount(made.database_dirs[i].c_str(), made.names[i].c_str(), 1);
    if (PHYSFS_getRealDir(made.samples[0].mounted.c_str()) == nullptr)
        exit(1);
    add_measure(made, "search, hit/PhysicsFS", [](const sample &one) {
        benchmark::DoNotOptimize(PHYSFS_getRealDir(one.mounted.c_str()));
    });
}
