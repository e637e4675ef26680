// The two questions about the disk that hosts ask directly.

#include "platform/platform.h"
#include "text/text.h"

const char *_vek_getlongpath(const char *path)
{
    static char long_path[VEK_PATH_SIZE];
    path = text_or_empty(path);
    return platform_long_path(path, long_path, sizeof long_path) ? long_path : path;
}

int vek_file_exists(const char *path)
{
    return platform_is_readable_file(text_or_empty(path)) ? 1 : 0;
}
