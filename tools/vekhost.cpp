// vekhost: a small host of the library, as the products and the solver are, for one command.

#include "commands.h"

enum exit_status { EXIT_OK, EXIT_FAILED, EXIT_USAGE, EXIT_NO_SESSION };

int main(int argc, char **argv)
{
    command_options options;
    exit_status status = EXIT_OK;
    start_output();
    const command *command = parse_command_line(argc, argv, options);
    if (!command)
        status = EXIT_USAGE;
    else if (command->kind != ALONE && start_session(options.session, command->kind == SEARCHES))
        status = EXIT_NO_SESSION;
    output.all_lines = output.all_lines || (command && command->kind == CHANGES);
    if (status == EXIT_OK && command->run(options) != 0)
        status = EXIT_FAILED;
    return finish_output() || status != EXIT_OK ? status : EXIT_FAILED;
}
