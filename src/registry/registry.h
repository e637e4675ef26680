// What the sources of this folder share beside vek.h and the records.

#pragma once

#include "records.h"
#include "text/builder.h"

#include <cstdio>

extern "C" {

// registry/databases.cpp.  Whether a file can be made in the directory: 1 or 0.
int vek_dir_is_writable(const char *path);

// registry/database_editing.cpp.  The rows of the database report and what its
// marks mean.  Every database is probed anew.  Result: 0.
int vek_db_list_print(text_builder *out);

// registry/table_directories.cpp.  The rows of the table report; `mode` is
// "info" for people.
void vek_tbl_list_print(text_builder *out, const char *mode);

// registry/defaults.cpp.  Append an entry to a list that exists.
void vek_propfile_add(const char *file_class, const char *value, int cfg_index);
void vek_testrig_add(const char *file_class, const char *value, int cfg_index);
}

// registry/databases.cpp.  Whether there is a database at the level; reports a
// level out of range.
bool check_level(int level, const char *caller);

// registry/databases.cpp.  Whether the current directory can be entered by its
// path, which has to be short.  Where it can't, no directory counts as there:
// hosts rely on that.
bool cwd_is_reachable();

// registry/databases.cpp.  Take the database at a level out of the list and
// release its record.
void db_unlink(int level);

// registry/table_directories.cpp.  Open a report file, which is emptied; null,
// with a report, if it does not open.
FILE *report_file_open(const char *path, const char *caller);
// Write the whole report, and close the file.  Returns 1, with a report, if there is
// no memory for it, else 0.
int report_file_close(FILE *file, text_builder *out, const char *caller);

// The texts by which a table is found.
enum { TABLE_CLASS, TABLE_EXT, TABLE_ALIAS, TABLE_TEXTS };

// A database's record as it is made, with what the library keeps beside it.
struct stored_db {
    vek_db_rec record;
    vek_db_rec *replaced; // that stood in its slot, hidden by a lower count; or null
    wchar_t name_hash;
    wchar_t *keys[TABLE_TEXTS]; // of the tables' texts, in the order of the tables
};
inline stored_db *stored(const vek_db_rec *db)
{
    return reinterpret_cast<stored_db *>(const_cast<vek_db_rec *>(db));
}

// registry/table_hashes.cpp.  Make room for the keys of that many tables; false if
// there is no memory.
bool hashes_resize(vek_db_rec *db, int capacity);
void hashes_release(vek_db_rec *db);
// Enter the keys of the table that is next.
void hashes_append(vek_db_rec *db, const vek_tbl_rec *table);
// The first table of a database with that class or extension; null if there is
// none, or no database.
vek_tbl_rec *table_of_class(const vek_db_rec *db, const char *file_class);
vek_tbl_rec *table_of_ext(const vek_db_rec *db, const char *ext);

// registry/tables.cpp.  Append a table to one database; false, with
// "malloc_failure" reported, if there is no memory, and without a report if a
// text is too long for its field.
bool table_append(vek_db_rec *db, const char *file_class, const char *dir, const char *ext,
                  int cfg_index);
// Take the last table of a database back.
void table_pop(vek_db_rec *db);
