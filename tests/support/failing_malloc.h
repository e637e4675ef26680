// Makes allocations of the library fail.

#pragma once

// Make the nth allocation from now on fail, counted from 1, and with `persistent` all
// after it.
void fail_allocation(int nth, bool persistent);
// Let allocations succeed again.  Returns whether one has failed.
bool stop_failing();
