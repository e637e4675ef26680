#include "session.h"

#include "hsk_control.h"
#include "vek.h"

// The core library sets variables for everyone in the process.
extern "C" int vc_putenv(const char *name, const char *value);

static void set_product_name(const session_options &options)
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

static session_outcome start_product(const session_options &options)
{
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

static session_outcome prepare_solver(const session_options &options)
{
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

static session_outcome search_empty_name()
{
    char name[1] = "";
    int found = 0;
    db_search(name, "", &found);
    if (vorn_vek_get_number_of_veks() < 1)
        return {1, "there is no database"};
    return {};
}

session_outcome start_session(const session_options &options, bool command_searches)
{
    set_product_name(options);
    if (!options.solver)
        return start_product(options);
    session_outcome outcome = prepare_solver(options);
    return outcome.code != 0 || command_searches ? outcome : search_empty_name();
}
