// The minimum of each measure: the system calls that lead to the same results with the
// fewest requests.  Each returns whether the results are right.

#pragma once

#include "../tree.h"

bool minimum_start(const tree &made);
// For a plug-in with its own database and table, in a started session.
bool minimum_plugin_start(const tree &made, const std::string &database, const std::string &table);
bool minimum_hit(const sample &one);
bool minimum_miss(const sample &one);
bool minimum_walk(const sample &one);
bool minimum_add_new(const tree &made, const std::string &database);
bool minimum_add_existing(const tree &made, const std::string &database);
bool minimum_create(const tree &made, const std::string &database);
bool minimum_copy(const std::string &source, const std::string &target);
