// Running operations in a child process, which inherits the state of this one and leaves
// it unchanged, and making their system calls fail.

#pragma once

#include <functional>
#include <string>
#include <vector>

// Sanitizers make children and long files ten times slower.  Tests then run one of every
// `sample_stride` cases.
#if defined __SANITIZE_ADDRESS__
constexpr int sample_stride = 7;
#else
constexpr int sample_stride = 1;
#endif

// Run the operation in a child process and return its result, or "died" if the child died.
std::string run_in_child(const std::function<std::string()> &operation);

// A fault to inject into the nth system call, counted from 1.
struct fault {
    int nth;
    int error;       // errno value of the failing call; 0 kills the process before the call
    bool persistent; // all later calls of its kind fail, too
};

// Run the operation in a child with the fault.  Returns "killed", or the result of the
// operation, followed by the change if it left descriptors open or changed the current
// directory.  Calls that manage memory and signals or get random numbers neither fail nor
// count.  *call is set to the number of the nth call: with sanitizers runs differ.
std::string run_with_fault(const fault &planted, const std::function<std::string()> &operation,
                           long *call);

// The numbers of the system calls that the operation makes, in order.
std::vector<long> system_calls(const std::function<std::string()> &operation);
// The errors that a kind of call is tested with.
std::vector<int> errors_of(long call);
