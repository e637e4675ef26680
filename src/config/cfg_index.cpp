// The configuration index of each file that was read.

#include "config/config.h"
#include "host/message.h"
#include "records.h"
#include "text/text.h"

#include <cstdlib>
#include <cstring>

using cfg_slot = char[VEK_CFG_PATH_SIZE];

cfg_slot vek_cfg_files[VEK_CFG_FILE_COUNT];
int vek_cfg_count;
int vek_next_cfg_index;

// Every file read in the session.  vek_cfg_files has no room for those of plug-ins.
static cfg_slot *files_read;
static int files_read_capacity;

static bool make_room()
{
    if (vek_next_cfg_index < files_read_capacity)
        return true;
    size_t old_count = static_cast<size_t>(files_read_capacity);
    size_t count = static_cast<size_t>(vek_next_cfg_index) + 10; // earlier growths may have failed
    void *grown = realloc(files_read, count * sizeof(cfg_slot));
    if (grown == nullptr)
        return false;
    files_read = static_cast<cfg_slot *>(grown);
    memset(files_read + old_count, 0, (count - old_count) * sizeof(cfg_slot));
    files_read_capacity = static_cast<int>(count);
    return true;
}

bool cfg_index_assign(const char *path)
{
    bool is_kept = make_room();
    if (is_kept)
        text_copy(files_read[vek_next_cfg_index], path);
    else
        report_malloc_failure("vek_init");
    ++vek_next_cfg_index;
    return is_kept;
}

const char *cfg_file_of(int cfg_index)
{
    if (cfg_index >= 0 && cfg_index < files_read_capacity && files_read[cfg_index][0] != '\0')
        return files_read[cfg_index];
    if (cfg_index >= 0 && cfg_index < VEK_CFG_FILE_COUNT)
        return vek_cfg_files[cfg_index];
    return vek_empty_text;
}
