#include "session.h"

#include "hsk_control.h"
#include "vek.h"

// The core library sets variables for everybody in the process.
extern "C" int vc_putenv(const char *name, const char *value);

static void name_product(const session_options &options)
{
    if (!options.product.empty())
        vc_putenv("KLV_PRODUCT_NAME", options.product.c_str());
}

static session_outcome start(const std::string &name)
{
    int code = vorn_vek_cfg_env_read(name.c_str());
    if (code != 0)
        return {code, "the start of '" + (name.empty() ? vek_product_name() : name) + "' failed"};
    return {};
}

session_outcome start_product(const session_options &options)
{
    name_product(options);
    session_outcome outcome = start("");
    for (const std::string &plugin : options.plugins) {
        if (outcome.code != 0)
            break;
        outcome = start(plugin);
    }
    return outcome;
}

static session_outcome load_model(const std::string &path)
{
    switch (hsk_load_model(path.c_str())) {
    case 0:
        return {};
    case 1:
        return {1, "the model '" + path + "' does not open"};
    default:
        return {1, "the model '" + path + "' has a list that is too long"};
    }
}

session_outcome prepare_solver(const session_options &options)
{
    name_product(options);
    session_outcome outcome;
    if (!options.model.empty())
        outcome = load_model(options.model);
    if (outcome.code != 0)
        return outcome;
    int code = F2C_VORN_VEK_CFG_ENV_READ();
    if (code != 0)
        return {code, "the environment of the solver run could not be read"};
    return {};
}
