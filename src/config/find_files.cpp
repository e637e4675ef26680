// Finding the configuration files of a product or plug-in.

#include "config/config.h"
#include "host/message.h"
#include "hsk.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cstdlib>
#include <cstring>

// Whether the name is that of the product, ignoring case.
static bool is_product(const char *name)
{
    char upper_name[VEK_PATH_SIZE];
    char upper_product[VEK_PATH_SIZE];
    if (!text_copy(upper_name, name))
        return false;
    vek_str_copy_to_upper_case(upper_name, upper_name);
    vek_str_copy_to_upper_case(vek_product_name(), upper_product);
    return strcmp(upper_name, upper_product) == 0;
}

// A path that is too long for vek_cfg_files counts as missing.
static bool try_candidate(char *path, std::initializer_list<const char *> parts)
{
    return text_join(path, VEK_CFG_PATH_SIZE, parts) && vek_file_exists(path) != 0;
}

static bool find_in_dir(char *path, const char *dir, const char *name)
{
    if (dir == nullptr)
        return false;
    return try_candidate(path, {dir, "/", name, "/", name, ".cfg"}) ||
           try_candidate(path, {dir, "/", name, ".cfg"});
}

static bool find_in_path_list(char *path, const char *dirs, const char *name)
{
    for (;;) {
        char dir[VEK_PATH_SIZE];
        text_span element = text_next_token(&dirs, ';');
        if (element.length == 0)
            return false;
        if (text_copy(dir, element) && find_in_dir(path, dir, name))
            return true;
    }
}

static bool find_in_plugin_dirs(char *path, const char *name, bool register_paths)
{
    constexpr const char *variable = "KLV_USER_PLUGIN_DIR";
    if (getenv(variable) == nullptr)
        return false;
    if (register_paths)
        register_new_plugin_paths(name); // may change the variable
    return find_in_path_list(path, text_or_empty(getenv(variable)), name);
}

static bool find_in_installation(char *path, const char *name)
{
    const char *top = getenv("topdir"); // ends in a separator
    return top != nullptr && try_candidate(path, {top, name, "/", name, ".cfg"});
}

bool find_plugin_file(char *path, const char *name, bool register_paths)
{
    return try_candidate(path, {"./", name, ".cfg"}) ||
           find_in_dir(path, private_dir_value(), name) ||
           find_in_plugin_dirs(path, name, register_paths) ||
           find_in_dir(path, name_variable_value(vek_product_name(), "_SITE"), name) ||
           find_in_installation(path, name);
}

static bool find_shared_file(char *path, const char *name)
{
    const char *own_dir = name_variable_value(name, "");
    if (own_dir != nullptr && try_candidate(path, {own_dir, "/", name, ".cfg"}))
        return true;
    return is_product(name) ? find_in_installation(path, name)
                            : find_plugin_file(path, name, false);
}

// Reports only in interface mode.
static int report_missing_shared_file(const char *name)
{
    if (vek_get_interface_mode() == 0)
        return 2;
    constexpr const char *caller = "vek_chk_cfg_files";
    vek_err(caller, "Cannot create the VEK database configuration.");
    report(REPORT_ERROR, caller, " Shared cfg file %s.cfg not found", name);
    vek_err(caller, " And is required to continue.");
    vek_err(caller, "Check your installation!");
    return 1;
}

// Set `path` to the empty string if there is no site file.
static void find_site_file(char *path, const char *name)
{
    const char *site = name_variable_value(name, "_SITE");
    if (text_is_empty(site) || !try_candidate(path, {site, "/", name, ".cfg"}))
        path[0] = '\0';
}

// Another program may have the file open for a moment without sharing it.
static bool private_file_exists(const char *path)
{
    if (vek_file_exists(path) != 0)
        return true;
    FILE *file = platform_open_to_read_retrying(path);
    if (file != nullptr)
        fclose(file);
    return file != nullptr;
}

// Create the private file if it is missing.  Returns 0, or 1 after a report.
static int ensure_private_file(char *path)
{
    private_path whole = private_path_parts();
    bool fits = strlen(whole.start) + strlen(whole.end) < VEK_CFG_PATH_SIZE;
    vek_private_cfg_path(path);
    if (fits &&
        (private_file_exists(path) || _vek_print_cfg_file("vek_chk_cfg_files", path, nullptr) != 0))
        return 0;
    report(REPORT_ERROR, "vek_chk_cfg_files", "Cannot create private configuration file %s%s",
           whole.start, whole.end);
    return 1;
}

// Outputs may be null.
static char *output_or_scratch(char *output)
{
    static char scratch[VEK_PATH_SIZE];
    return output == nullptr ? scratch : output;
}

int vek_chk_cfg_files(const char *name, char *shared, char *site, char *private_file)
{
    name = text_or_empty(name);
    if (!find_shared_file(output_or_scratch(shared), name))
        return report_missing_shared_file(name);
    find_site_file(output_or_scratch(site), name);
    return ensure_private_file(output_or_scratch(private_file));
}
