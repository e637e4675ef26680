// Counting what a start reports.

#include "commands.h"
#include "hsk_control.h"
#include "vek.h"

#include <cstdio>

static void add_file(std::string &files, const char *path)
{
    if (*path)
        files += (files.empty() ? "" : ", ") + std::string(path);
}

// The configuration files in the order in which they are read.
static std::string list_files(const session_options &options)
{
    std::string files;
    char shared[VEK_PATH_SIZE] = "", site[VEK_PATH_SIZE] = "", private_file[VEK_PATH_SIZE] = "";
    if (vek_chk_cfg_files(vek_product_name(), shared, site, private_file) != 0)
        return "no file";
    for (const char *path : {shared, site, private_file})
        add_file(files, path);
    for (const std::string &plugin : options.plugins)
        if (vek_chk_cfg_files(plugin.c_str(), shared, site, nullptr) == 0) {
            add_file(files, shared);
            add_file(files, site);
        }
    return files;
}

static std::string counted(int count, const char *what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

int check_session(const command_options &options)
{
    int errors = hsk_error_count(), warnings = hsk_warning_count();
    std::printf("%s and %s in %s\n", counted(errors, "error").c_str(),
                counted(warnings, "warning").c_str(), list_files(options.session).c_str());
    return options.outcome.code == 0 && errors == 0 && warnings == 0 ? 0 : 1;
}
