// Starting the library as a product or as a solver does.

#include "commands.h"
#include "hsk_control.h"
#include "vek.h"

// The core library sets variables for everyone in the process.
extern "C" int vc_putenv(const char *name, const char *value);

// Sets the product's name for the process and returns it as the library keeps it.
static string set_product(const session_options &options)
{
    if (!options.product.empty())
        vc_putenv("KLV_PRODUCT_NAME", options.product.c_str());
    vek_set_product_name();
    return vek_product_name();
}

// Says why a start failed.  Returns the code.
static int check_start(int code, const string &failure)
{
    const string reason = code == 0 ? "" : current_directory_fault();
    complain(code == 0 ? "" : failure + (reason.empty() ? "" : ": ") + reason);
    return code;
}

static int start_solver(const session_options &options, bool command_searches)
{
    char name[1] = "";
    int found = 0;
    if (!options.model.empty() && hsk_load_model(options.model.c_str()) != 0)
        return check_start(1, "the model '" + options.model + "' cannot be loaded");
    const int code = check_start(F2C_VORN_VEK_CFG_ENV_READ(),
                                 "the environment of the solver run could not be read");
    if (code != 0 || command_searches)
        return code;
    db_search(name, "", &found);
    return check_start(vorn_vek_get_number_of_veks() < 1 ? 1 : 0, "there is no database");
}

int start_session(const session_options &options, bool command_searches)
{
    const string product = set_product(options);
    if (options.solver)
        return start_solver(options, command_searches);
    int code = check_start(vorn_vek_cfg_env_read(""), "the start of '" + product + "' failed");
    for (size_t i = 0; code == 0 && i < options.plugins.size(); ++i)
        code = check_start(vorn_vek_cfg_env_read(options.plugins[i].c_str()),
                           "the start of '" + options.plugins[i] + "' failed");
    return code;
}

configuration next_session(const session_options &options)
{
    return read_session(set_product(options), options.plugins);
}

strings database_names()
{
    strings names;
    for (int level = 1; level <= vorn_vek_get_number_of_veks(); ++level)
        names.push_back(vorn_vek_level2db(level));
    return names;
}
