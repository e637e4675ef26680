// The parts of the benchmark.  Each adds its measures, named "measure/who".  "vek" is the
// library.  It is compared with the system calls of the operation alone ("baseline"),
// with the fewest system calls that lead to the same results ("minimum"), or with
// another library.

#pragma once

#include "tree.h"

void add_start(const tree &made);   // in child processes: a process starts one session
void add_session(const tree &made); // starts a session
void add_copies(const tree &made);
void run_calls_once(const tree &made, bool is_cold); // between marks, for strace
