// Running operations in a process of their own, which has the state of this one
// and leaves it alone, and letting the system refuse what they ask.

#pragma once

#include <functional>
#include <string>
#include <vector>

// Sanitizers make children and long files ten times as slow: then tests take this
// part of what they have.
#if defined __SANITIZE_ADDRESS__
constexpr int sample_stride = 7;
#else
constexpr int sample_stride = 1;
#endif

// What the operation gives, from a child process; "died" if the child did.
std::string run_in_child(const std::function<std::string()> &operation);

// What happens to the nth system call, counted from 1.
struct fault {
    int nth;
    int error;     // the call is refused with it; 0: the process is killed before the call
    bool for_good; // and so are all later calls of its kind
};

// Runs the operation in a child with the fault.  Result: what the operation
// gave, and behind it what descriptors it left open, or in which other directory
// it left the process; or "killed".  Calls that manage memory and signals, or
// fetch random numbers, are neither refused nor counted.
// *call becomes the kind of the nth: with sanitizers not all runs are alike.
std::string run_with_fault(const fault &wish, const std::function<std::string()> &operation,
                           long *call);

// The kinds of the system calls that the operation makes, in order.
std::vector<long> system_calls(const std::function<std::string()> &operation);
// The errors with which a kind of call is refused here.
std::vector<int> errors_of(long call);
