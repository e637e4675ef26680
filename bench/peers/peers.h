// Other libraries for the same tasks, where they are installed.  Each is started once per
// process.  The queries return whether the library's result is right.

#pragma once

#include "../tree.h"

void physfs_start(const tree &made);
bool physfs_search(const sample &one); // for the existing file

void kpathsea_start(const tree &made);
bool kpathsea_walk(const sample &one); // through all databases, for the missing file

void qt_start(const tree &made);
bool qt_resolve(const sample &one); // the path of the existing file
