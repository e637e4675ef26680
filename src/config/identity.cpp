// The identity of the session: the product, its names and variables, and the modes.

#include "config/config.h"
#include "host/message.h"
#include "text/text.h"

#include <cstdlib>
#include <cstring>

struct product {
    const char *short_name;
    const char *display_name;
    const char *file_variable; // names the private file; null if there is none
    const char *dir_variable;  // names the private directory; null for KLV_<NAME>_PRIVATE_DIR
};

static const product products[] = {
    {"vorn", "TAVIK/Vorn", "KLV_VORN_PRIVATE_CFG", nullptr},
    {"belthar", "TAVIK/Belthar", "KLV_BLTH_PRIVATE_CFG", "KLV_BLTH_PRIVATE_DIR"},
    {"skarn", "TAVIK/Skarn", "KLV_SKRN_PRIVATE_CFG", "KLV_SKRN_PRIVATE_DIR"},
    {"dunmoren", "TAVIK/Dunmoren", "KLV_DUN_PRIVATE_CFG", "KLV_DUN_PRIVATE_DIR"},
    {"quorvalind", "TAVIK/Quorvalind", "KLV_QRVL_PRIVATE_CFG", "KLV_QRVL_PRIVATE_DIR"},
    {"tesmo", "TAVIK/Tesmo", nullptr, nullptr},
    {"glx", "TAVIK/GLX", nullptr, nullptr},
};
static const product any_other_product = {"", "TAVIK/Vorn", nullptr, nullptr};

static char product_name[16];
static bool product_is_set;
static int solver_mode;
static bool solver_mode_is_set;
static int interface_mode;

static const product *current_product()
{
    for (const product &known : products)
        if (vek_product_name_is(known.short_name))
            return &known;
    return &any_other_product;
}

void vek_set_product_name()
{
    if (product_is_set)
        return;
    product_is_set = true;
    const char *value = getenv("KLV_PRODUCT_NAME");
    text_truncate(product_name, sizeof product_name, value == nullptr ? "vorn" : value);
}

const char *vek_product_name()
{
    return product_name;
}

int vek_product_name_is(const char *text)
{
    return strcmp(text_or_empty(text), product_name) == 0 ? 1 : 0;
}

const char *vek_product_string()
{
    return current_product()->display_name;
}

void vek_set_solver_mode(int mode)
{
    if (solver_mode_is_set)
        return;
    solver_mode_is_set = true;
    solver_mode = mode;
}

int vek_solver_mode()
{
    return solver_mode;
}

void vek_set_interface_mode()
{
    interface_mode = 1;
}

int vek_get_interface_mode()
{
    return interface_mode;
}

const char *vorn_vek_get_os()
{
    return "nt";
}

const char *name_variable_value(const char *name, const char *suffix)
{
    char variable[VEK_PATH_SIZE];
    if (!text_join(variable, {"KLV_", name, suffix}))
        return nullptr;
    vek_str_copy_to_upper_case(variable, variable);
    return getenv(variable);
}

const char *private_dir_value()
{
    const char *variable = current_product()->dir_variable;
    return variable != nullptr ? getenv(variable)
                               : name_variable_value(product_name, "_PRIVATE_DIR");
}

static void warn_of_missing_home(const private_path &path)
{
    static bool warned;
    if (warned)
        return;
    warned = true;
    report(REPORT_WARNING, "vek_private_cfg_path",
           "Environment variable HOME is not set; private cfg file %s%s is used.", path.start,
           path.end);
}

private_path private_path_parts()
{
    const char *variable = current_product()->file_variable;
    const char *value = variable == nullptr ? nullptr : getenv(variable);
    if (value != nullptr)
        return {value, ""};
    const char *home = getenv("HOME");
    if (!text_is_empty(home))
        return {home, "/.vorn.cfg"};
    private_path here = {".", "/.vorn.cfg"};
    warn_of_missing_home(here);
    return here;
}

void vek_private_cfg_path(char *path)
{
    private_path whole = private_path_parts();
    text_join(path, VEK_PATH_SIZE, {whole.start, whole.end});
}
