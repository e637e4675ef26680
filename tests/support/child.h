// Running operations in a process of their own, which has the state of this one
// and leaves it alone, and letting the system refuse what they ask.

#pragma once

#include <functional>
#include <string>

// What the operation gives, from a child process; "died" if the child did.
std::string in_child(const std::function<std::string()> &operation);

// What happens to the nth system call, counted from 1.
struct fault {
    int nth;
    int error;     // the call is refused with it; 0: the process is killed before the call
    bool for_good; // and so are all later calls of its kind
};

// Runs the operation in a child with the fault.  Result: false if it made no
// nth system call.  *answer becomes what the operation gave, or "killed".
// Calls that manage memory and signals are never refused.
bool run_with_fault(const fault &wish, const std::function<std::string()> &operation,
                    std::string *answer);
