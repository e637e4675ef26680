// What hosts and the other sources ask about the file system.

#include "platform/platform.h"
#include "text/text.h"

int vek_file_exists(const char *path)
{
    return platform_is_readable_file(text_or_empty(path)) ? 1 : 0;
}

const char *_vek_getlongpath(const char *path)
{
    static char long_path[VEK_PATH_SIZE];
    path = text_or_empty(path);
    return platform_long_path(path, long_path, sizeof long_path) ? long_path : path;
}

// A failure at the first call is final.  Later calls create the directory again if
// it was removed.
const char *vorn_vek_tmp_file_path()
{
    static char vek_tmp_dir[VEK_PATH_SIZE];
    static bool vek_tmp_first = true;
    char dir[VEK_PATH_SIZE];
    if ((vek_tmp_first || vek_tmp_dir[0] != '\0') && platform_temp_dir(dir, sizeof dir))
        text_copy(vek_tmp_dir, dir);
    vek_tmp_first = false;
    return vek_tmp_dir[0] == '\0' ? nullptr : vek_tmp_dir;
}

const char *vorn_vek_get_file_separator()
{
    return "/";
}

int vorn_vek_inherit_permissions()
{
    return 0;
}
