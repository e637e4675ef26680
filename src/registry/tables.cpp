// TABLE statements, and the tables of each database.

#include "host/message.h"
#include "memory/array.h"
#include "registry/registry.h"
#include "text/text.h"

#include <cstdlib>
#include <cstring>

// Ensure that one more table fits.  The capacity is that of the smallest of a
// database's arrays, so it changes after all have grown.
static bool reserve_table(vek_db_rec *db)
{
    const int step = db->tbl_capacity == 0 ? 25 : 5;
    int capacity = db->tbl_capacity;
    if (!array_reserve(&db->tbls, &capacity, db->tbl_count, step))
        return false;
    if (capacity > db->tbl_capacity && !hashes_resize(db, capacity))
        return false;
    db->tbl_capacity = capacity;
    return true;
}

bool table_append(vek_db_rec *db, const char *file_class, const char *dir, const char *ext,
                  int cfg_index)
{
    vek_tbl_rec table = {};
    if (!text_copy(table.class_, file_class) || !text_copy(table.dir, dir) ||
        !text_copy(table.ext, ext))
        return false;
    text_join(table.alias, {"<", db->name, ">/", dir});
    text_join(table.full_path, {db->path, "/", dir});
    table.cfg_index = cfg_index;

    vek_tbl_rec *record = nullptr;
    if (reserve_table(db))
        record = static_cast<vek_tbl_rec *>(malloc(sizeof *record));
    if (record == nullptr) {
        report_malloc_failure("vek_tbl_add");
        return false;
    }
    *record = table;
    hashes_append(db, record);
    db->tbls[db->tbl_count++] = record;
    return true;
}

void table_pop(vek_db_rec *db)
{
    free(db->tbls[--db->tbl_count]);
}

void vek_tbl_add(int position, const char *file_class, const char *dir, const char *ext,
                 int cfg_index)
{
    vek_db_rec *db = position < 0 || position >= db_count() ? nullptr : db_at(position + 1);
    if (db != nullptr)
        table_append(db, text_or_empty(file_class), text_or_empty(dir), text_or_empty(ext),
                     cfg_index);
}

struct tbl_statement {
    text_span file_class;
    text_span dir;
    text_span ext;
};

static tbl_statement parse_table_statement(const char *statement)
{
    tbl_statement fields;
    text_next_word(&statement);
    fields.file_class = text_next_word(&statement);
    fields.dir = text_next_word(&statement);
    fields.ext = text_next_word(&statement);
    return fields;
}

static bool report_if_too_long(text_span field, int size, const char *what)
{
    if (field.length < static_cast<size_t>(size))
        return false;
    report(REPORT_ERROR, "vek_tbl_read", "The table %s '%.*s'", what,
           static_cast<int>(field.length), field.start);
    report(REPORT_ERROR, "vek_tbl_read", "  is too long (MAX length is %d).", size - 1);
    return true;
}

// Add a table to every database, or to none.  Returns 0, or 1 if to none.
static int add_to_all(const char *file_class, const char *dir, const char *ext, int cfg_index)
{
    for (int level = 1; level <= db_count(); ++level) {
        if (table_append(db_at(level), file_class, dir, ext, cfg_index))
            continue;
        while (--level >= 1)
            table_pop(db_at(level));
        return 1;
    }
    return 0;
}

int vek_tbl_read(const char *statement, int cfg_index)
{
    statement = text_or_empty(statement);
    tbl_statement fields = parse_table_statement(statement);
    if (fields.ext.length == 0)
        return 1;
    if (report_if_too_long(fields.file_class, VEK_CLASS_SIZE, "class name") ||
        report_if_too_long(fields.dir, VEK_TBL_DIR_SIZE, "directory name") ||
        report_if_too_long(fields.ext, VEK_EXT_SIZE, "extension"))
        return 1;
    if (db_count() < 1) {
        report(REPORT_ERROR, "vek_tbl_read", "%s\n%s",
               "No valid DATABASE has been initialized before TABLE definition", statement);
        vek_abort("vek_tbl_read()", "Fatal config file error");
        return 1;
    }
    char file_class[VEK_CLASS_SIZE];
    char dir[VEK_TBL_DIR_SIZE];
    char ext[VEK_EXT_SIZE];
    text_copy(file_class, fields.file_class);
    text_copy(dir, fields.dir);
    text_copy(ext, fields.ext);
    if (table_of_class(db_at(1), file_class) != nullptr || table_of_ext(db_at(1), ext) != nullptr)
        return cfg_index == vek_private_cfg_index ? 2 : 0;
    return add_to_all(file_class, dir, ext, cfg_index);
}
