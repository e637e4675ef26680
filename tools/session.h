// Starting the library as a product or as a solver does.

#pragma once

#include <string>
#include <vector>

struct session_options {
    std::string product; // empty: the value of KLV_PRODUCT_NAME
    std::vector<std::string> plugins;
    bool solver = false;
    std::string model; // empty: a solver run without a model
};

// The result of a start.  `code` is the library's, or 1 if a model could not be
// loaded or there is no database; `error` is the message for it.
struct session_outcome {
    int code = 0;
    std::string error;
};

// Starts the product and then each plug-in, up to the first failure, or prepares
// a solver run.  In a solver run the library starts itself at its first search.
// That is the command's if `command_searches`, otherwise one of an empty name.
session_outcome start_session(const session_options &options, bool command_searches);
