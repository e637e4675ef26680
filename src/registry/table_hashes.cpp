// Finding a table of one database by a text of its record.  Beside the records
// stand the keys of their texts, in a row for each kind of text, so that the
// records of other tables are not touched.

#include "memory/array.h"
#include "registry/registry.h"
#include "text/text.h"

#include <cstdlib>
#include <cwchar>

static const char *text_of(const vek_tbl_rec *table, int which)
{
    return which == TABLE_CLASS ? table->class_ : which == TABLE_EXT ? table->ext : table->alias;
}

bool hashes_resize(vek_db_rec *db, int capacity)
{
    for (wchar_t *&keys : stored(db)->keys)
        if (!array_resize(&keys, static_cast<size_t>(capacity)))
            return false;
    return true;
}

void hashes_release(vek_db_rec *db)
{
    for (wchar_t *keys : stored(db)->keys)
        free(keys);
}

void hashes_append(vek_db_rec *db, const vek_tbl_rec *table)
{
    for (int which = 0; which < TABLE_TEXTS; ++which)
        stored(db)->keys[which][db->tbl_count] = text_hash_nocase(text_of(table, which));
}

static vek_tbl_rec *find(const vek_db_rec *db, int which, const char *text)
{
    if (db == nullptr || db->tbl_count == 0)
        return nullptr;
    text = text_or_empty(text);
    const wchar_t key = text_hash_nocase(text);
    const wchar_t *keys = stored(db)->keys[which];
    const wchar_t *end = keys + db->tbl_count;
    for (const wchar_t *pos = keys; pos < end; ++pos) {
        pos = wmemchr(pos, key, static_cast<size_t>(end - pos));
        if (pos == nullptr)
            return nullptr;
        vek_tbl_rec *table = db->tbls[pos - keys];
        if (vek_strcasecmp(text_of(table, which), text) == 0)
            return table;
    }
    return nullptr;
}

vek_tbl_rec *table_of_class(const vek_db_rec *db, const char *file_class)
{
    return find(db, TABLE_CLASS, file_class);
}

vek_tbl_rec *table_of_ext(const vek_db_rec *db, const char *ext)
{
    return find(db, TABLE_EXT, ext);
}

vek_tbl_rec *table_of_alias(const vek_db_rec *db, const char *alias)
{
    return find(db, TABLE_ALIAS, alias);
}
