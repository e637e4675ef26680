#include "support/checks.h"

#include "records.h"
#include "support/harness.h"

#include <algorithm>
#include <cstring>

CallerString::CallerString(std::string_view string, size_t min_size)
    : before(string.substr(0, string.find('\0')))
{
    bytes.reset(new char[std::max(before.size() + 1, min_size)]);
    memcpy(bytes.get(), before.c_str(), before.size() + 1);
}

void CallerString::expect_unchanged() const
{
    EXPECT(before == bytes.get());
}

void CallerString::expect_converted(char from, char to) const
{
    std::string after = bytes.get();
    EXPECT(after.size() == before.size());
    for (size_t i = 0; i < after.size(); ++i)
        EXPECT(after[i] == before[i] || (before[i] == from && after[i] == to));
}

std::string_view checked(const char *result, size_t size)
{
    EXPECT(result != nullptr);
    size_t length = strnlen(result, size);
    EXPECT(length < size);
    return {result, length};
}

static void check_invariants(const vek_db_rec &db)
{
    checked(db.name, sizeof db.name);
    checked(db.path, sizeof db.path);
    EXPECT(0 <= db.tbl_count && db.tbl_count <= db.tbl_capacity);
    for (int i = 0; i < db.tbl_count; ++i) {
        const vek_tbl_rec &table = *db.tbls[i];
        std::string dir(checked(table.dir, sizeof table.dir));
        EXPECT(checked(table.alias, sizeof table.alias) == "<" + std::string(db.name) + ">/" + dir);
        EXPECT(checked(table.full_path, sizeof table.full_path) ==
               std::string(db.path) + "/" + dir);
        checked(table.class_, sizeof table.class_);
        checked(table.ext, sizeof table.ext);
    }
}

static void check_invariants(const vek_dflt_list *list)
{
    if (list == nullptr)
        return;
    EXPECT(0 <= list->count && list->count <= list->capacity);
    for (int i = 0; i < list->count; ++i) {
        checked(list->entries[i]->class_, VEK_CLASS_SIZE);
        checked(list->entries[i]->value, VEK_PATH_SIZE);
    }
}

void check_invariants_records()
{
    EXPECT(db_count() <= vek_list_capacity);
    for (int level = 1; level <= db_count(); ++level)
        check_invariants(*db_at(level));
    check_invariants(vek_propfile_defaults);
    check_invariants(vek_testrig_defaults);
}

static bool tables_are_equal(const vek_tbl_rec *one, const vek_tbl_rec *other)
{
    return strcmp(one->class_, other->class_) == 0 && strcmp(one->dir, other->dir) == 0 &&
           strcmp(one->ext, other->ext) == 0 && one->cfg_index == other->cfg_index;
}

static void expect_equal_tables(const vek_db_rec &one, const vek_db_rec &other)
{
    EXPECT(one.tbl_count == other.tbl_count);
    for (int i = 0; i < one.tbl_count; ++i)
        EXPECT(tables_are_equal(one.tbls[i], other.tbls[i]));
}

static void expect_unique_tables(const vek_db_rec &db)
{
    for (int i = 0; i < db.tbl_count; ++i)
        for (int j = 0; j < i; ++j)
            EXPECT(vek_strcasecmp(db.tbls[i]->class_, db.tbls[j]->class_) != 0 &&
                   vek_strcasecmp(db.tbls[i]->ext, db.tbls[j]->ext) != 0);
}

void check_invariants_registries()
{
    check_invariants_records();
    EXPECT(db_count() == number_of_veks);
    for (int level = 1; level <= db_count(); ++level) {
        expect_equal_tables(*db_at(1), *db_at(level));
        EXPECT(vorn_vek_db2level(db_at(level)->name) == level); // unique names
    }
    if (db_count() > 0)
        expect_unique_tables(*db_at(1));
}
