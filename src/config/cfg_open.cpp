// Opening and closing a configuration file, for its two readers.

#include "config/config.h"
#include "host/message.h"
#include "platform/platform.h"

#include <cerrno>
#include <cstring>

FILE *cfg_open(const char *path, const char *caller)
{
    FILE *file = platform_open_to_read_soon(path);
    if (file == nullptr)
        report(REPORT_ERROR, caller, "Cannot open configuration file '%s': %s", path,
               strerror(errno));
    return file;
}

bool cfg_close(FILE *file, const char *path, const char *caller)
{
    bool is_whole = ferror(file) == 0;
    fclose(file);
    if (!is_whole)
        report(REPORT_ERROR, caller, "Cannot read configuration file '%s' to its end.", path);
    return is_whole;
}
