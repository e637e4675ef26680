// PhysicsFS: mounts each database under its name, and queries which directory holds a
// file.

#include "peers.h"

#include <physfs.h>

void physfs_start(const tree &made)
{
    PHYSFS_init(nullptr);
    for (size_t i = 0; i < made.names.size(); ++i)
        PHYSFS_mount(made.database_dirs[i].c_str(), made.names[i].c_str(), 1);
}

bool physfs_search(const sample &one)
{
    return PHYSFS_getRealDir(one.mounted.c_str()) != nullptr;
}
