// The solver's file search, which initializes the library at the first call.

#include "host/environment.h"
#include "host/message.h"
#include "host/plugin_list.h"
#include "hsk.h"
#include "text/text.h"

#include <cstdlib>
#include <cstring>

static bool vek_solver_setup_done;
static bool vek_solver_uses_databases;

static const char caller[] = "db_search";

static void start_name(const char *name)
{
    if (vorn_vek_init(name) != 0)
        report(REPORT_ERROR, caller, "VEK database was not initialized properly for '%s' plugin...",
               name);
}

static void start_plugins(int handle)
{
    char list[plugin_list_size];
    char name[plugin_list_size];
    vek_solver_uses_databases = true;
    vek_set_product_name();
    plugin_list_fetch(handle, list);
    for (const char *rest = list; plugin_list_next(&rest, name);) {
        if (strlen(name) < VEK_START_NAME_SIZE)
            start_name(name);
        else
            report(REPORT_WARNING, caller,
                   "Plugin name '%s' must be less than %d chars, skipping...", name,
                   VEK_START_NAME_SIZE);
    }
}

static bool is_product_of_old_models(const char *name)
{
    for (const char *product : {"vorn", "skarn", "dunmoren", "quorvalind", "belthar"})
        if (vek_strcasecmp(name, product) == 0)
            return true;
    return false;
}

// For a model from before models had a list of plug-ins.
static void start_product()
{
    char name[VEK_START_NAME_SIZE]; // a start may change the environment
    const char *value = getenv("KLV_PRODUCT_NAME");
    if (value == nullptr || !text_copy(name, value) || !is_product_of_old_models(name))
        return;
    vek_err(
        caller,
        "Solver string 'plugin_list' not found, tvm may not be compatible with current release");
    vek_solver_uses_databases = true;
    vek_set_product_name();
    start_name(name);
}

// Start the plug-ins that the loaded model lists or, if it has no list, the product.
static void start_once()
{
    vc_str_print("");
    vek_solver_setup_done = true;
    int handle = plugin_list_find(false);
    if (handle != 0)
        start_plugins(handle);
    else
        start_product();
    vc_str_print("");
}

static bool looks_like_alias(const char *name)
{
    return (strchr(name, '<') != nullptr && strchr(name, '>') != nullptr) ||
           strstr(name, "klvds://") != nullptr;
}

// The search while no databases are in use.  Returns the name itself.
static char *search_plain_path(char *name, int *found)
{
    *found = vek_file_exists(name);
    if (*found == 0 && looks_like_alias(name)) {
        report(REPORT_ERROR, caller, "Open for file '%s' failed:", name);
        vek_err(caller, "VEK database not initialized properly...\n");
    }
    return name;
}

// Returns a path that the caller frees, or vek_empty_text.
static char *search_databases(char *name, const char *file_class, int *found)
{
    char *path = vorn_vek_search_file(file_class, vorn_vek_nt2unix_path(name), 1);
    *found = *path != '\0' ? 1 : 0;
    return path;
}

// For this product every name counts as found, without a search.
static bool search_is_bypassed()
{
    return env_is("QNS_PRODUCT_NAME", "ZAPT");
}

char *db_search(char *name, const char *file_class, int *found)
{
    int ignored;
    if (found == nullptr)
        found = &ignored;
    name = text_or_empty(name);
    *found = 0;
    if (search_is_bypassed()) {
        *found = 1;
        return name;
    }
    if (vek_get_interface_mode() != 0) {
        vek_solver_setup_done = true;
        vek_solver_uses_databases = true;
    }
    if (!vek_solver_setup_done)
        start_once();
    return vek_solver_uses_databases ? search_databases(name, file_class, found)
                                     : search_plain_path(name, found);
}

// Copy a Fortran string to a buffer that can be changed.  A string of more than 267
// characters is truncated to 266.  Every string ends at its first space.
static void from_fortran(char (&copy)[VEK_PATH_SIZE], const char *text)
{
    text = text_or_empty(text);
    size_t length = strnlen(text, VEK_PATH_SIZE);
    if (length == VEK_PATH_SIZE)
        length = VEK_PATH_SIZE - 2;
    text_copy(copy, text_span{text, length});
    copy[strcspn(copy, " ")] = '\0';
}

void F2C_DB_SEARCH(char *result, int, int *length, int *found, const char *name, int,
                   const char *file_class)
{
    char name_copy[VEK_PATH_SIZE];
    char class_copy[VEK_PATH_SIZE];
    from_fortran(name_copy, name);
    from_fortran(class_copy, file_class);
    char *path = db_search(name_copy, class_copy, found);
    if (result != nullptr)
        text_copy(result, VEK_PATH_SIZE, path);
    if (length != nullptr)
        *length = static_cast<int>(strlen(path));
    if (path != name_copy && path != vek_empty_text)
        free(path);
}
