// Writing the user's private configuration file.

#include "config/config.h"
#include "host/message.h"
#include "platform/platform.h"
#include "text/text.h"

static void warn_of_unwritable_file(const char *path)
{
    static bool warned;
    if (warned)
        return;
    warned = true;
    constexpr const char *caller = "_vek_print_cfg_file";
    report(REPORT_WARNING, caller, "Private cfg file %s is unwritable.", path);
    vek_warn(caller, "It will not be updated during the session.");
}

// A missing file is created, empty.
int _vek_print_cfg_file(const char *, const char *path, const char *)
{
    FILE *file = platform_open_to_write(path, "a");
    if (file == nullptr) {
        warn_of_unwritable_file(path);
        return 0;
    }
    return fclose(file) == 0 ? 1 : 0;
}
