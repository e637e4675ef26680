// The small questions about files that need none.

#include "platform/platform.h"
#include "text/text.h"

// A failure at the first call is final.  Later calls see to it that the
// directory is still there.
const char *vorn_vek_tmp_file_path()
{
    static char vek_tmp_dir[VEK_PATH_SIZE];
    static bool vek_tmp_first = true;
    char dir[VEK_PATH_SIZE];
    if ((vek_tmp_first || vek_tmp_dir[0] != '\0') && platform_temporary_dir(dir, sizeof dir))
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
