#include "session.h"

#include "hsk_control.h"
#include "vek.h"

#include <cstdlib>

static void name_product(const session_options &options)
{
    if (!options.product.empty())
        setenv("KLV_PRODUCT_NAME", options.product.c_str(), 1);
    vek_set_product_name();
}

// The library passes over a name without a shared configuration file in
// silence.  Somebody who typed the name wants to hear of it.
static bool has_no_file(const char *name)
{
    char shared[VEK_PATH_SIZE];
    char site[VEK_PATH_SIZE];
    char private_file[VEK_PATH_SIZE];
    return vek_chk_cfg_files(name, shared, site, private_file) == 2;
}

static session_outcome start(const char *name)
{
    int code = vorn_vek_init(name);
    if (code != 0)
        return {code, std::string("the start of '") + name + "' failed"};
    if (has_no_file(name))
        return {1, std::string("no configuration file '") + name + ".cfg' was found"};
    return {};
}

session_outcome start_product(const session_options &options)
{
    name_product(options);
    session_outcome outcome = start(vek_product_name());
    for (const std::string &plugin : options.plugins) {
        if (outcome.code != 0)
            break;
        if (plugin.size() < VEK_START_NAME_SIZE)
            outcome = start(plugin.c_str());
        else
            outcome = {1, "the plug-in's name '" + plugin + "' is too long"};
    }
    return outcome;
}

session_outcome prepare_solver(const session_options &options)
{
    name_product(options);
    vek_set_solver_mode(1);
    if (options.model.empty())
        return {};
    switch (hsk_load_model(options.model.c_str())) {
    case 0:
        return {};
    case 1:
        return {1, "the model '" + options.model + "' does not open"};
    default:
        return {1, "the model '" + options.model + "' has a list that is too long"};
    }
}
