// The configuration index of each file that was read.

#include "config/config.h"
#include "host/message.h"
#include "memory/array.h"
#include "records.h"
#include "text/text.h"

#include <cstring>

using cfg_slot = char[VEK_CFG_PATH_SIZE];

cfg_slot vek_cfg_files[VEK_CFG_FILE_COUNT];
int vek_cfg_count;
int vek_next_cfg_index;

// Every file read in the session.  vek_cfg_files has no room for those of plug-ins.
static cfg_slot *files_read;
static int files_read_capacity;

// The index may lie far above the capacity: it also counts the files for which
// there was no memory.
static bool reserve_slot()
{
    const int old_capacity = files_read_capacity;
    if (!array_reserve(&files_read, &files_read_capacity, vek_next_cfg_index, 10))
        return false;
    const size_t added = static_cast<size_t>(files_read_capacity - old_capacity);
    memset(files_read + old_capacity, 0, added * sizeof(cfg_slot));
    return true;
}

bool cfg_index_assign(const char *path)
{
    bool is_kept = reserve_slot();
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
