// The ordered list of databases.

#include "host/message.h"
#include "memory/array.h"
#include "platform/platform.h"
#include "registry/registry.h"
#include "text/text.h"

#include <cstdlib>
#include <cstring>

vek_db_rec **vek_list;
int number_of_veks;
int vek_list_capacity;

// How many slots, from the first on, have a record.  Unlike number_of_veks, no host
// can set it.
static int stored_count;

int db_count()
{
    if (number_of_veks < 0)
        return 0;
    return number_of_veks < stored_count ? number_of_veks : stored_count;
}

vek_db_rec *db_at(int level)
{
    return level >= 1 && level <= db_count() ? vek_list[level - 1] : nullptr;
}

void vek_set_number_of_veks(int count)
{
    number_of_veks = count;
}

int vorn_vek_get_number_of_veks()
{
    return number_of_veks;
}

int vorn_vek_db2level(const char *name)
{
    name = text_or_empty(name);
    const uint32_t hash = text_hash_nocase(name);
    const int count = db_count();
    for (int level = 1; level <= count; ++level)
        if (vek_list[level - 1]->name_hash == hash &&
            vek_strcasecmp(vek_list[level - 1]->name, name) == 0)
            return level;
    return -1;
}

vek_db_rec *db_find(const char *name)
{
    return db_at(vorn_vek_db2level(name));
}

bool check_level(int level, const char *caller)
{
    if (level < 1)
        report(REPORT_ERROR, caller, "Level '%i' is invalid.  The level must be greater than zero.",
               level);
    else if (level > number_of_veks)
        report(REPORT_ERROR, caller,
               "Level '%i' is invalid.  There currently only '%i' active databases.", level,
               number_of_veks);
    return db_at(level) != nullptr;
}

const char *vorn_vek_level2db(int level)
{
    return check_level(level, "vorn_vek_level2db") ? db_at(level)->name : vek_empty_text;
}

int vorn_vek_db_iswritable(const char *name)
{
    const vek_db_rec *db = db_find(name);
    return db == nullptr ? 0 : db->writable;
}

bool cwd_is_reachable()
{
    char home[260];
    return platform_current_dir(home, sizeof home) && platform_dir_is_accessible(home);
}

int vorn_vek_db_exists(const char *path)
{
    return cwd_is_reachable() && platform_dir_is_accessible(text_or_empty(path)) ? 1 : 0;
}

int vek_dir_is_writable(const char *path)
{
    return platform_can_create(text_or_empty(path), "tmp_bedwvorn.txt") ? 1 : 0;
}

static bool copy_tables(vek_db_rec *to, const vek_db_rec *from)
{
    for (int i = 0; i < from->tbl_count; ++i) {
        const vek_tbl_rec *table = from->tbls[i];
        if (!table_append(to, table->class_, table->dir, table->ext, table->cfg_index))
            return false;
    }
    return true;
}

static void release_database(vek_db_rec *db)
{
    while (db->tbl_count > 0)
        table_pop(db);
    free(db->tbls);
    hashes_release(db);
    free(db);
}

// What remains of a removed database: its tables, and the database that it had
// replaced.  Strings that lookups returned from them stay valid, so they are kept
// for the rest of the process, where leak checkers find them.
struct retired_tables {
    vek_tbl_rec **tbls;
    vek_db_rec *replaced;
    retired_tables *next;
};

// Release a database except for its tables.  The record's own block, made smaller,
// becomes the list entry that keeps them, so this cannot fail.
static void release_retiring_tables(vek_db_rec *db)
{
    static retired_tables *last;
    vek_tbl_rec **tbls = db->tbls;
    vek_db_rec *replaced = db->replaced;
    hashes_release(db);
    if (tbls == nullptr && replaced == nullptr) {
        free(db);
        return;
    }
    void *block = realloc(db, sizeof *last);
    retired_tables *kept = static_cast<retired_tables *>(block == nullptr ? db : block);
    *kept = {tbls, replaced, last};
    last = kept;
}

// Databases that a lower number_of_veks hides move up as well.
void db_unlink(int level)
{
    vek_db_rec **slot = vek_list + level - 1;
    vek_db_rec *db = *slot;
    memmove(slot, slot + 1, static_cast<size_t>(stored_count - level) * sizeof *slot);
    vek_list[--stored_count] = nullptr;
    --number_of_veks;
    release_retiring_tables(db);
}

// Append a database to those in use.  Returns 0, or 1 if it is not stored.
static int store_database(const char *name, const char *path, int cfg_index)
{
    if (number_of_veks < 0 || number_of_veks > stored_count)
        return 1; // the host has set a count that no slot follows
    vek_db_rec *db = nullptr;
    if (array_reserve(&vek_list, &vek_list_capacity, number_of_veks, 5))
        db = static_cast<vek_db_rec *>(calloc(1, sizeof *db));
    if (db == nullptr) {
        report_malloc_failure("vek_db_read");
        return 1;
    }
    text_copy(db->name, name);
    db->name_hash = text_hash_nocase(name);
    text_copy(db->path, path);
    db->writable = vek_dir_is_writable(path);
    db->cfg_index = cfg_index;
    if (number_of_veks > 0 && !copy_tables(db, db_at(1))) {
        release_database(db);
        return 1;
    }
    if (number_of_veks < stored_count)
        db->replaced = vek_list[number_of_veks];
    else
        ++stored_count;
    vek_list[number_of_veks++] = db;
    return 0;
}

static bool ensure_database_dir(const char *path)
{
    if (vorn_vek_db_exists(path) != 0)
        return true;
    platform_make_dir(path);
    return vorn_vek_db_exists(path) != 0;
}

// Remove the spaces and tabs at the end of a string that begins with a word.
static text_span trim_end(text_span string)
{
    while (strchr(" \t", string.start[string.length - 1]) != nullptr)
        --string.length;
    return string;
}

// Expand the variables in the path of a statement, convert "\" to "/" and remove extra
// separators.
static void normalize_path(char *path)
{
    vorn_vek_nt2unix_path(path);
    vek_eval_str(path);
    vorn_vek_nt2unix_path(path);
    vek_rm_extra_separators(path);
}

// Hosts rely on the order: the directory is created even if the name is rejected
// afterwards, and a directory that cannot be created is reported before a name that
// is in use.  Returns a code of vek_db_read.
static int add_database(const char *name, char *path, int cfg_index)
{
    normalize_path(path);
    if (!ensure_database_dir(path))
        return 2;
    if (strchr(path, '~') != nullptr)
        text_copy(path, VEK_PATH_SIZE, _vek_getlongpath(path));
    if (db_find(name) != nullptr)
        return 3;
    if (strcmp(name, "shared") == 0 && cfg_index == vek_private_cfg_index)
        return 6;
    return store_database(name, path, cfg_index);
}

int vek_db_read(const char *statement, int cfg_index)
{
    statement = text_or_empty(statement);
    text_next_word(&statement);
    text_span name_span = text_next_word(&statement);
    text_span path_span = text_rest_of_line(&statement);
    if (path_span.length == 0)
        return 1;
    char name[VEK_DB_NAME_SIZE];
    char path[VEK_PATH_SIZE];
    if (!text_copy(name, name_span))
        return 4;
    text_copy(path, trim_end(path_span));
    return add_database(name, path, cfg_index);
}
