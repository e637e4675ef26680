#include "check.h"

#include "hsk_control.h"
#include "vek.h"

#include <cstdio>

static void add_file(std::string &files, const char *path)
{
    if (*path)
        files += (files.empty() ? "" : ", ") + std::string(path);
}

// In the order in which they are read.
static std::string files_of(const session_options &options)
{
    std::string files;
    char shared[VEK_PATH_SIZE] = "", site[VEK_PATH_SIZE] = "", own[VEK_PATH_SIZE] = "";
    if (vek_chk_cfg_files(vek_product_name(), shared, site, own) != 0)
        return "no file";
    for (const char *path : {shared, site, own})
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

int check_session(const session_options &options, const session_outcome &outcome)
{
    int errors = hsk_error_count(), warnings = hsk_warning_count();
    std::printf("%s and %s in %s\n", counted(errors, "error").c_str(),
                counted(warnings, "warning").c_str(), files_of(options).c_str());
    return outcome.code == 0 && errors == 0 && warnings == 0 ? 0 : 1;
}
