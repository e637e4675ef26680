// Starting the library as a product or as a solver does.

#pragma once

#include <string>
#include <vector>

struct session_options {
    std::string product; // empty: what KLV_PRODUCT_NAME says
    std::vector<std::string> plugins;
    bool solver = false;
    std::string model; // empty: a solver run without a model
};

// How a start went.  `code` is that of the library's start, or 1 for a model
// that can't be loaded; `trouble` says in words what was wrong.
struct session_outcome {
    int code = 0;
    std::string error;
};

// A product's session: the product's start, then one for each plug-in.  It
// ends at the first start that fails.
session_outcome start_product(const session_options &options);

// A solver's run: model and environment.  The library starts itself at the
// first search.
session_outcome prepare_solver(const session_options &options);
