// The default writable database.

#include "host/message.h"
#include "records.h"
#include "text/text.h"

#include <cstdlib>

static char *vek_write_default; // null until the first success
static bool vek_write_default_updates_cfg = true;

int vorn_vek_set_write_default(const char *name)
{
    if (vorn_vek_db_iswritable(name) == 0) {
        vek_err("vorn_vek_set_write_default",
                "The specified database name is not writable by the user.");
        return 1;
    }
    if (vek_write_default == nullptr)
        vek_write_default = static_cast<char *>(malloc(VEK_DB_NAME_SIZE));
    if (vek_write_default == nullptr) {
        report_malloc_failure("vorn_vek_set_write_default");
        return 1;
    }
    text_copy(vek_write_default, VEK_DB_NAME_SIZE, name);
    if (vek_write_default_updates_cfg)
        vorn_wrt_cfg("vorn_vek_set_write_default", name);
    return 0;
}

int vorn_vek_set_write_default_no_cfg_update(const char *name)
{
    vek_write_default_updates_cfg = false;
    int result = vorn_vek_set_write_default(name);
    vek_write_default_updates_cfg = true;
    return result;
}

const char *vorn_vek_get_write_default()
{
    return vek_write_default;
}

int vek_set_write_db(const char *statement)
{
    statement = text_or_empty(statement);
    text_next_word(&statement);
    text_span word = text_next_word(&statement);
    if (word.length == 0)
        return 1;
    char name[VEK_DB_NAME_SIZE];
    text_copy(name, word); // too long for a name: matches no database
    return vorn_vek_set_write_default_no_cfg_update(name);
}
