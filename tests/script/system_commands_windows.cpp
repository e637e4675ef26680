// There are no such commands on Windows: their cases have the tag "[posix]".

#include "commands.h"

const std::map<std::string, Command> system_commands;

std::string run_operation(const Command &operation, Arguments &arguments)
{
    return operation(arguments);
}
