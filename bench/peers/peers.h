// What a user would take instead, where it is installed.  Each is started once in
// a process; a question is answered with whether the answer is as it should be.

#pragma once

#include "../tree.h"

void physfs_start(const tree &made);
bool physfs_search(const sample &one); // for the file that is there

void kpathsea_start(const tree &made);
bool kpathsea_walk(const sample &one); // through all databases, for the missing file

void qt_start(const tree &made);
bool qt_resolve(const sample &one); // the path of the file that is there
