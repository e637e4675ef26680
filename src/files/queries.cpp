// The small questions about files that need none.

#include "platform/platform.h"
#include "text/text.h"

const char *vorn_vek_tmp_file_path()
{
    static char vek_tmp_dir[VEK_PATH_SIZE];
    static bool vek_tmp_first = true;
    if (vek_tmp_first && !platform_temporary_dir(vek_tmp_dir, sizeof vek_tmp_dir))
        vek_tmp_dir[0] = '\0';
    vek_tmp_first = false; // a failure is final
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
