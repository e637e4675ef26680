// The table directories on disk, and the table report.

#include "host/message.h"
#include "platform/platform.h"
#include "registry/registry.h"
#include "text/text.h"

#include <cerrno>
#include <climits>
#include <cstring>

static void warn_of_missing_directory(const vek_db_rec *db, const vek_tbl_rec *table)
{
    constexpr const char *caller = "vek_upd_vek_tbls";
    report(REPORT_WARNING, caller,
           "VEK <%s> is write-protected and cannot be updated to contain the", db->name);
    report(REPORT_WARNING, caller, "  table directory %s", table->full_path);
    report(REPORT_WARNING, caller, "  defined in the configuration file %s.",
           cfg_file_of(table->cfg_index));
}

// Whether the directory is there, or can be made.  Another process may make it at
// the same moment.
static bool ensure_dir(const char *path, bool cwd_is_reachable)
{
    if ((cwd_is_reachable && platform_can_enter(path)) || platform_make_dir(path))
        return true;
    return errno == EEXIST && cwd_is_reachable && platform_can_enter(path);
}

// Make the directories of the tables whose index is not above the last.  The
// current directory stays the same meanwhile, so it is looked at once.
// Result: 1 if one could not be made.
static int make_directories(const vek_db_rec *db, int last_cfg_index)
{
    int result = 0;
    bool cwd_is_reachable = db->tbl_count > 0 && can_come_back();
    for (int i = 0; i < db->tbl_count; ++i) {
        const vek_tbl_rec *table = db->tbls[i];
        if (table->cfg_index > last_cfg_index || ensure_dir(table->full_path, cwd_is_reachable))
            continue;
        warn_of_missing_directory(db, table);
        result = 1;
    }
    return result;
}

// A database gets the tables of its own file and of the files before it.
static int make_in_all_databases()
{
    int result = 0;
    for (int level = 1; level <= db_count(); ++level)
        result |= make_directories(db_at(level), db_at(level)->cfg_index);
    return result;
}

// The user's databases get all tables, those of plug-ins among them.
static int make_in_private_databases()
{
    int result = 0;
    for (int level = 1; level <= db_count(); ++level)
        if (db_at(level)->cfg_index == vek_private_cfg_index)
            result |= make_directories(db_at(level), INT_MAX);
    return result;
}

int vek_upd_vek_tbls(int selector)
{
    if (selector == -1)
        return make_in_all_databases();
    if (selector == -2)
        return make_in_private_databases();
    const vek_db_rec *db = db_at(selector);
    return db == nullptr ? 0 : make_directories(db, db->cfg_index);
}

static void keep_files(char (*cfg_files)[VEK_CFG_PATH_SIZE])
{
    for (int slot = 0; cfg_files != nullptr && slot < vek_cfg_count; ++slot)
        text_copy(vek_cfg_files[slot], cfg_files[slot]);
}

int vek_upd_all_vek_tbls(char (*cfg_files)[VEK_CFG_PATH_SIZE])
{
    static bool vek_upd_first_call = true;
    if (vek_upd_first_call)
        keep_files(cfg_files);
    vek_upd_first_call = false;
    return make_in_all_databases();
}

int vek_upd_plg_vek_tbls(char (*cfg_files)[VEK_CFG_PATH_SIZE])
{
    keep_files(cfg_files);
    return make_in_private_databases();
}

// These messages stay out of the shared message buffer.
static char cre_dat_buf[1024];

static void report_no_directory(const char *path)
{
    report_in(cre_dat_buf, sizeof cre_dat_buf, REPORT_ERROR, "vorn_cre_dat",
              "Error: Cannot create directory %s", path);
}

static bool make_table_directory(const char *path, const vek_tbl_rec *table)
{
    char directory[VEK_TBL_PATH_SIZE];
    text_join(directory, {path, "/", table->dir});
    if (ensure_dir(directory, can_come_back()))
        return true;
    report_no_directory(directory);
    return false;
}

int vorn_cre_dat(const char *path)
{
    constexpr const char *caller = "vorn_cre_dat";
    path = text_or_empty(path);
    if (vorn_vek_db_exists(path) != 0) {
        report_in(cre_dat_buf, sizeof cre_dat_buf, REPORT_ERROR, caller,
                  "ERROR: %s already exists\n", path);
        return 0;
    }
    if (strlen(path) >= VEK_PATH_SIZE || !platform_make_dir(path)) {
        report_no_directory(path);
        return 0;
    }
    bool is_complete = true;
    const vek_db_rec *first = db_at(1);
    for (int i = 0; first != nullptr && i < first->tbl_count; ++i)
        if (!make_table_directory(path, first->tbls[i]))
            is_complete = false;
    if (!is_complete) {
        vek_err(caller, "Warning: new database may not be configured");
        vek_err(caller, "  properly and may produce errors when accessing");
    }
    return 1;
}

static const char row_format[] = "%-12s %-23s %-26s %s\n";

void vek_tbl_list_print(FILE *stream, const char *mode)
{
    const char *first_column = vek_strcasecmp(mode, "info") == 0 ? "Table" : "TABLE";
    const vek_db_rec *first = db_at(1);
    for (int i = 0; first != nullptr && i < first->tbl_count; ++i) {
        const vek_tbl_rec *table = first->tbls[i];
        fprintf(stream, row_format, first_column, table->class_, table->dir, table->ext);
    }
}

FILE *report_file_open(const char *path, const char *caller)
{
    FILE *file = platform_open_to_write(path, "w");
    if (file == nullptr)
        report(REPORT_ERROR, caller, "Open for vek info file '%s' failed: %s.\n", path,
               strerror(errno));
    return file;
}

int vorn_vek_tbl_info(const char *path)
{
    if (text_is_empty(path))
        return 0;
    FILE *file = report_file_open(path, "vorn_vek_tbl_info");
    if (file == nullptr)
        return 1;
    fputs("Current VEK table structure :\n", file);
    fprintf(file, row_format, "", "Class name", "Table Directory", "Extension");
    fprintf(file, row_format, "", "----------", "---------------", "---------");
    vek_tbl_list_print(file, "info");
    fclose(file);
    return 0;
}
