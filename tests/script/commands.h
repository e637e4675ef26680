// What scripts can do: the exported operations of the library, and commands that prepare
// and show files, variables and the state of the session.

#pragma once

#include "notation.h"

#include <functional>
#include <map>

// The words after the name of a command, and the lines below it.
struct Arguments {
    Lines words, raw; // decoded, and as they stand
    std::string text;
    size_t used = 0;

    std::string next();
    bool is_used_up() const;
    std::string rest(); // the raw words that are left
};

// A command returns what follows it in the script: " = result", and lines of its own, each
// with "\n" and two spaces in front.
using Command = std::function<std::string(Arguments &)>;

extern const std::map<std::string, Command> operations; // of include/vek.h
extern const std::map<std::string, Command> commands;   // for files, variables and state
extern const std::map<std::string, Command> system_commands;

extern const char *last_result, *held_result; // strings; "{held}" passes the second as it is

extern bool lacked_memory; // during the last operation, as "allocation" asked for

// Calls an operation while the system does what system commands have asked for.
std::string run_operation(const Command &operation, Arguments &arguments);

// Executes one command, without its expected result.
std::string execute(const std::string &command, const std::string &text);
// Executes "COMMAND = result; COMMAND = result", and returns it with the results that it has,
// and the lines below it.
Lines run_line(const std::string &line, const std::string &text);
