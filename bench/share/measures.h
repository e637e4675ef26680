// What is measured on a share.

#pragma once

#include "../tree.h"

struct measure {
    const char *name;                     // "measure/who"
    void (*arrange)(const tree &made);    // on the disk, before the share is mounted
    void (*prepare)(const tree &made);    // in the measured process, not counted
    bool (*run)(const tree &made);        // whether it did what it is taken for
    bool (*has_worked)(const tree &made); // on the disk, after the share is unmounted
};

// In the order in which they are shown.
extern const std::vector<measure> measures;

// Where the databases lie in the tree.
inline const char share_subdirectory[] = "/share";
