// Makes the library's allocations fail.

#pragma once

// The nth allocation from now on fails, counted from 1, and with `for_good` all
// behind it.
void fail_allocation(int nth, bool for_good);
bool has_failed();
// All succeed again.  Result: whether one has failed.
bool stop_failing();
