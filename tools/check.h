// Testing configuration files by a start.

#pragma once

#include "session.h"

// Print how many errors and warnings the start had, and the files that were
// read.  Result: 0 if it went well and there was neither.
int check_session(const session_options &options, const session_outcome &outcome);
