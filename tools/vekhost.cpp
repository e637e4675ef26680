// vekhost: a small host that loads the library as the products and the solver
// do, runs one command and exits.

#include "commands.h"
#include "hsk_control.h"

#include <cstdio>

enum exit_status {
    EXIT_OK = 0,
    EXIT_FAILED = 1, // also: a file is missing
    EXIT_USAGE = 2,
    EXIT_NO_SESSION = 3
};

static exit_status run(const command &command, command_options &options)
{
    if (command.session != SESSION_NONE)
        options.outcome = start_session(options.session, command.session == SESSION_SEARCHED);
    if (options.outcome.code != 0) {
        std::fprintf(stderr, "vekhost: %s\n", options.outcome.error.c_str());
        if (command.session != SESSION_REPORTED)
            return EXIT_NO_SESSION;
    }
    return command.run(options) == 0 ? EXIT_OK : EXIT_FAILED;
}

int main(int argc, char **argv)
{
    command_options options;
    bool is_usage_error = false;
    const command *command = parse_command_line(argc, argv, options, &is_usage_error);
    if (!command)
        return is_usage_error ? EXIT_USAGE : EXIT_OK;

    // Standard output is for results alone.  It is line buffered so that results
    // and the library's lines keep their order on one terminal or in one file.
    hsk_output_to_error(1);
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    return run(*command, options);
}
