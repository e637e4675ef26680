// Lookups by class or extension: the other of the two, and the table's directory.

#include "registry/registry.h"
#include "text/text.h"

#include <cstring>

// Copy an extension without the version that may follow after ";".  Returns false
// if the copy would be longer than any table's extension.
static bool strip_version(const char *ext, char (&stripped)[VEK_EXT_SIZE])
{
    ext = text_or_empty(ext);
    return text_copy(stripped, text_span{ext, strcspn(ext, ";")});
}

// The table of an extension that may have a version; null if there is none.
static const vek_tbl_rec *find_table_by_ext(const vek_db_rec *db, const char *ext)
{
    char stripped[VEK_EXT_SIZE];
    return strip_version(ext, stripped) ? table_of_ext(db, stripped) : nullptr;
}

const char *vorn_vek_class2ext(const char *file_class)
{
    const vek_tbl_rec *table = table_of_class(db_at(1), file_class);
    return table == nullptr ? vek_empty_text : table->ext;
}

const char *vorn_vek_class2tbl(const char *file_class)
{
    const vek_tbl_rec *table = table_of_class(db_at(1), file_class);
    return table == nullptr ? vek_empty_text : table->dir;
}

const char *vorn_vek_ext2class(const char *ext)
{
    const vek_tbl_rec *table = find_table_by_ext(db_at(1), ext);
    return table == nullptr ? vek_empty_text : table->class_;
}

const char *vorn_vek_ext2tbl(const char *ext)
{
    const vek_tbl_rec *table = find_table_by_ext(db_at(1), ext);
    return table == nullptr ? vek_empty_text : table->dir;
}

const char *vek_ext2alias(const char *ext, int level)
{
    static char database_alias[VEK_DB_NAME_SIZE + 2];
    const vek_db_rec *db = db_at(level);
    if (db == nullptr)
        return vek_empty_text;
    char stripped[VEK_EXT_SIZE];
    if (strip_version(ext, stripped) && (stripped[0] == '\0' || strcmp(stripped, "*") == 0)) {
        text_join(database_alias, {"<", db->name, ">"});
        return database_alias;
    }
    const vek_tbl_rec *table = find_table_by_ext(db, ext);
    return table == nullptr ? vek_empty_text : table->alias;
}

const char *vorn_vek_ext2path(const char *ext, int level)
{
    if (!check_level(level, "vorn_vek_ext2path"))
        return vek_empty_text;
    const vek_tbl_rec *table = find_table_by_ext(db_at(level), ext);
    return table == nullptr ? vek_empty_text : table->full_path;
}

const char *vorn_vek_get_tbl_path(const char *file_class, int level)
{
    if (!check_level(level, "vorn_vek_get_tbl_path"))
        return vek_empty_text;
    const vek_tbl_rec *table = table_of_class(db_at(level), file_class);
    return table == nullptr ? vek_empty_text : table->full_path;
}

const char *vorn_vek_get_def_wri_tbl(const char *file_class)
{
    return vorn_vek_get_tbl_path(file_class, vorn_vek_db2level(vorn_vek_get_write_default()));
}
