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

// A database's directory while its table directories are created.
struct db_dir {
    const char *path;
    open_dir *open; // null: each table directory is accessed by its full path
    bool is_listed; // a table that is not marked as listed has no directory
    bool cwd_ok;    // if not, no directory counts as existing
};

// The path of a table relative to its database.
static const char *path_in_db(const vek_tbl_rec *table)
{
    const char *path = table->dir;
    while (*path == '/')
        ++path;
    return *path == '\0' ? "." : path;
}

static bool table_dir_is_accessible(const db_dir *dir, const vek_tbl_rec *table)
{
    char path[VEK_TBL_PATH_SIZE];
    if (!dir->cwd_ok)
        return false;
    if (dir->open != nullptr)
        return platform_dir_is_accessible_at(dir->open, path_in_db(table));
    return text_join(path, {dir->path, "/", table->dir}) && platform_dir_is_accessible(path);
}

static bool make_table_dir(const db_dir *dir, const vek_tbl_rec *table)
{
    char path[VEK_TBL_PATH_SIZE];
    if (dir->open != nullptr)
        return platform_make_dir_at(dir->open, path_in_db(table));
    return text_join(path, {dir->path, "/", table->dir}) && platform_make_dir(path);
}

// Returns whether the directory exists or is created.  Another process may create it
// at the same moment, and some file systems list it in another case.
static bool ensure_table_dir(const db_dir *dir, const vek_tbl_rec *table)
{
    bool may_exist = !dir->is_listed || table->dir_is_listed;
    return (may_exist && table_dir_is_accessible(dir, table)) || make_table_dir(dir, table) ||
           (errno == EEXIST && table_dir_is_accessible(dir, table));
}

static bool is_wanted(const vek_tbl_rec *table, int last_cfg_index)
{
    return table->cfg_index <= last_cfg_index;
}

static int count_unseen(const vek_db_rec *db, int last_cfg_index)
{
    int count = 0;
    for (int i = 0; i < db->tbl_count; ++i)
        if (is_wanted(db->tbls[i], last_cfg_index) && !db->tbls[i]->dir_existed)
            ++count;
    return count;
}

// Mark the tables that have an entry in the open directory.  Returns true if the
// directory was read to its end, so that the other tables have none.  Stops when
// all `unseen` tables are found, and in a directory that has many other entries.
static bool list_tables(const vek_db_rec *db, open_dir *dir, int unseen)
{
    char name[VEK_TBL_DIR_SIZE];
    char alias[VEK_DB_NAME_SIZE + VEK_TBL_DIR_SIZE + 3];
    for (int left = 2 * db->tbl_count + 100; unseen > 0 && left > 0; --left) {
        if (!platform_read_dir(dir, name, sizeof name))
            return errno == 0;
        text_join(alias, {"<", db->name, ">/", name});
        vek_tbl_rec *table = table_of_alias(db, alias);
        if (table == nullptr || table->dir_is_listed)
            continue;
        table->dir_is_listed = true;
        if (!table->dir_existed)
            --unseen;
    }
    return false;
}

// Open a database's directory, and list it where that is expected to pay: to a file
// server a listing is one request for many tables.  Directories that existed at the
// last check are likely to be cached, so only the other tables count.
static db_dir open_db_dir(const vek_db_rec *db, int last_cfg_index, bool cwd_ok)
{
    constexpr int few = 4;
    db_dir dir = {db->path, nullptr, false, cwd_ok};
    int unseen = count_unseen(db, last_cfg_index);
    if (unseen > few && dir.cwd_ok)
        dir.open = platform_open_dir(db->path);
    if (dir.open != nullptr)
        dir.is_listed = list_tables(db, dir.open, unseen);
    return dir;
}

// Create the directories of the tables whose configuration index is at most
// `last_cfg_index`.  Returns 1 if a directory could not be created, else 0.
static int make_table_dirs(const vek_db_rec *db, int last_cfg_index, bool cwd_ok)
{
    int result = 0;
    if (db->tbl_count == 0)
        return 0;
    db_dir dir = open_db_dir(db, last_cfg_index, cwd_ok);
    for (int i = 0; i < db->tbl_count; ++i) {
        vek_tbl_rec *table = db->tbls[i];
        if (is_wanted(table, last_cfg_index)) {
            table->dir_existed = ensure_table_dir(&dir, table);
            if (!table->dir_existed) {
                warn_of_missing_directory(db, table);
                result = 1;
            }
        }
        table->dir_is_listed = false;
    }
    if (dir.open != nullptr)
        platform_close_dir(dir.open);
    return result;
}

// A database gets the tables of its own file and of the files before it.  The current
// directory does not change in between, so it is checked once.
static int make_in_all_databases()
{
    int result = 0;
    const bool cwd_ok = cwd_is_reachable();
    for (int level = 1; level <= db_count(); ++level)
        result |= make_table_dirs(db_at(level), db_at(level)->cfg_index, cwd_ok);
    return result;
}

// The user's databases get all tables, including those of plug-ins.
static int make_in_private_databases()
{
    int result = 0;
    const bool cwd_ok = cwd_is_reachable();
    for (int level = 1; level <= db_count(); ++level)
        if (db_at(level)->cfg_index == vek_private_cfg_index)
            result |= make_table_dirs(db_at(level), INT_MAX, cwd_ok);
    return result;
}

int vek_upd_vek_tbls(int selector)
{
    if (selector == -1)
        return make_in_all_databases();
    if (selector == -2)
        return make_in_private_databases();
    const vek_db_rec *db = db_at(selector);
    return db == nullptr ? 0 : make_table_dirs(db, db->cfg_index, cwd_is_reachable());
}

static void copy_cfg_files(char (*cfg_files)[VEK_CFG_PATH_SIZE])
{
    for (int slot = 0; cfg_files != nullptr && slot < vek_cfg_count; ++slot)
        text_copy(vek_cfg_files[slot], cfg_files[slot]);
}

int vek_upd_all_vek_tbls(char (*cfg_files)[VEK_CFG_PATH_SIZE])
{
    static bool vek_upd_first_call = true;
    if (vek_upd_first_call)
        copy_cfg_files(cfg_files);
    vek_upd_first_call = false;
    return make_in_all_databases();
}

int vek_upd_plg_vek_tbls(char (*cfg_files)[VEK_CFG_PATH_SIZE])
{
    copy_cfg_files(cfg_files);
    return make_in_private_databases();
}

// The reports of vorn_cre_dat must not overwrite the shared message buffer.
static char cre_dat_buf[1024];

static void report_no_directory(const char *path)
{
    report_in(cre_dat_buf, sizeof cre_dat_buf, REPORT_ERROR, "vorn_cre_dat",
              "Error: Cannot create directory %s", path);
}

// Nothing is in a new directory, so no table directory is looked for.
static bool make_dirs_in_new_database(const char *path)
{
    bool is_complete = true;
    const db_dir dir = {path, nullptr, true, cwd_is_reachable()};
    const vek_db_rec *first = db_at(1);
    for (int i = 0; first != nullptr && i < first->tbl_count; ++i)
        if (!ensure_table_dir(&dir, first->tbls[i])) {
            char directory[VEK_TBL_PATH_SIZE];
            text_join(directory, {path, "/", first->tbls[i]->dir});
            report_no_directory(directory);
            is_complete = false;
        }
    return is_complete;
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
    if (!make_dirs_in_new_database(path)) {
        vek_err(caller, "Warning: new database may not be configured");
        vek_err(caller, "  properly and may produce errors when accessing");
    }
    return 1;
}

static const char row_format[] = "%-12s %-23s %-26s %s\n";

void vek_tbl_list_print(text_builder *out, const char *mode)
{
    const char *first_column = vek_strcasecmp(mode, "info") == 0 ? "Table" : "TABLE";
    const vek_db_rec *first = db_at(1);
    for (int i = 0; first != nullptr && i < first->tbl_count; ++i) {
        const vek_tbl_rec *table = first->tbls[i];
        builder_print(out, row_format, first_column, table->class_, table->dir, table->ext);
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

int report_file_close(FILE *file, text_builder *out, const char *caller)
{
    bool is_truncated = out->is_truncated;
    platform_write(file, out->bytes, out->length);
    fclose(file);
    builder_release(out);
    if (is_truncated)
        report_malloc_failure(caller);
    return is_truncated ? 1 : 0;
}

int vorn_vek_tbl_info(const char *path)
{
    constexpr const char *caller = "vorn_vek_tbl_info";
    if (text_is_empty(path))
        return 0;
    FILE *file = report_file_open(path, caller);
    if (file == nullptr)
        return 1;
    text_builder out = {};
    builder_print(&out, "Current VEK table structure :\n");
    builder_print(&out, row_format, "", "Class name", "Table Directory", "Extension");
    builder_print(&out, row_format, "", "----------", "---------------", "---------");
    vek_tbl_list_print(&out, "info");
    return report_file_close(file, &out, caller);
}
