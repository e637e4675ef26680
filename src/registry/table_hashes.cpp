// Finding a table of one database by its class, extension or alias.  For each of
// these keys a database has an array with the hashes of its tables, so that a
// search reads only the records whose hash is equal.

#include "memory/array.h"
#include "registry/registry.h"
#include "text/text.h"

#include <bit>
#include <cstdlib>
#include <cstring>

static const char *key_of(const vek_tbl_rec *table, int key)
{
    return key == TABLE_CLASS ? table->class_ : key == TABLE_EXT ? table->ext : table->alias;
}

bool hashes_resize(vek_db_rec *db, int capacity)
{
    for (uint32_t *&hashes : db->tbl_hashes)
        if (!array_resize(&hashes, static_cast<size_t>(capacity)))
            return false;
    return true;
}

void hashes_release(vek_db_rec *db)
{
    for (uint32_t *hashes : db->tbl_hashes)
        free(hashes);
}

void hashes_append(vek_db_rec *db, const vek_tbl_rec *table)
{
    for (int key = 0; key < TABLE_KEY_COUNT; ++key)
        db->tbl_hashes[key][db->tbl_count] = text_hash_nocase(key_of(table, key));
}

// Hashes are compared in blocks, with one bit of a uint32_t for each.  The bits are in a
// table because not every processor can shift each lane of a vector by its own count.
constexpr int block_size = 32;

struct bit_table {
    uint32_t bits[block_size];
};

static constexpr bit_table make_bit_table()
{
    bit_table table = {};
    for (int i = 0; i < block_size; ++i)
        table.bits[i] = uint32_t{1} << i;
    return table;
}

// Returns a mask with bit i set if block[i] is equal.  The loop has no branch, so the
// compiler vectorizes it.
static uint32_t match_block(const uint32_t *block, uint32_t hash)
{
    static constexpr bit_table table = make_bit_table();
    uint32_t matches = 0;
    for (int i = 0; i < block_size; ++i)
        matches |= (block[i] == hash ? UINT32_MAX : 0) & table.bits[i];
    return matches;
}

// Returns the position of the first equal hash at or after `pos`; `count` if there
// is none.
static int find_hash(const uint32_t *hashes, int count, int pos, uint32_t hash)
{
    for (; pos <= count - block_size; pos += block_size) {
        const uint32_t matches = match_block(hashes + pos, hash);
        if (matches != 0)
            return pos + std::countr_zero(matches);
    }
    while (pos < count && hashes[pos] != hash)
        ++pos;
    return pos;
}

// Most callers spell a key as the table does, and strcmp is faster.
static bool key_matches(const char *key, const char *string)
{
    return strcmp(key, string) == 0 || vek_strcasecmp(key, string) == 0;
}

static vek_tbl_rec *find_table_by_key(const vek_db_rec *db, int key, const char *string)
{
    if (db == nullptr)
        return nullptr;
    string = text_or_empty(string);
    const int count = db->tbl_count;
    const uint32_t *hashes = db->tbl_hashes[key];
    const uint32_t hash = text_hash_nocase(string);
    for (int pos = 0; (pos = find_hash(hashes, count, pos, hash)) < count; ++pos)
        if (key_matches(key_of(db->tbls[pos], key), string))
            return db->tbls[pos];
    return nullptr;
}

vek_tbl_rec *table_of_class(const vek_db_rec *db, const char *file_class)
{
    return find_table_by_key(db, TABLE_CLASS, file_class);
}

vek_tbl_rec *table_of_ext(const vek_db_rec *db, const char *ext)
{
    return find_table_by_key(db, TABLE_EXT, ext);
}

vek_tbl_rec *table_of_alias(const vek_db_rec *db, const char *alias)
{
    return find_table_by_key(db, TABLE_ALIAS, alias);
}
