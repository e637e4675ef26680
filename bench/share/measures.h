// What is measured on a share.

#pragma once

#include "../tree.h"

struct measure {
    const char *name;                        // "measure/who"
    void (*arrange)(const tree &made);       // on the disk, before the share is mounted
    void (*prepare)(const tree &made);       // in the measured process, not counted
    bool (*run)(const tree &made);           // returns whether the results are right
    bool (*has_succeeded)(const tree &made); // on the disk, after the share is unmounted
};

// In the order of the output.
extern const std::vector<measure> measures;

// Where the databases lie in the tree.
inline const char share_subdirectory[] = "/share";
