// What the sources of this folder share beyond vek.h and the records.

#pragma once

#include "records.h"
#include "text/builder.h"

#include <cstdio>

extern "C" {

// registry/databases.cpp.  Returns 1 if a file can be created in the directory,
// else 0.
int vek_dir_is_writable(const char *path);

// registry/database_editing.cpp.  Append the rows of the database report and the
// legend of its marks.  Probes every database again.  Returns 0.
int vek_db_list_print(text_builder *out);

// registry/table_directories.cpp.  Append the rows of the table report.  With the
// mode "info", for people, they begin with "Table", else with "TABLE".
void vek_tbl_list_print(text_builder *out, const char *mode);

// registry/defaults.cpp.  Append an entry to a list that exists.
void vek_propfile_add(const char *file_class, const char *value, int cfg_index);
void vek_testrig_add(const char *file_class, const char *value, int cfg_index);
}

// registry/databases.cpp.  Returns whether there is a database at the level.
// Reports a level that is out of range.
bool check_level(int level, const char *caller);

// registry/databases.cpp.  Returns whether the current directory is accessible by
// its path, which must have fewer than 260 characters.  If not, no directory
// counts as existing: hosts rely on that.
bool cwd_is_reachable();

// registry/databases.cpp.  Remove the database at a level from the list and
// release its record.
void db_unlink(int level);

// registry/table_directories.cpp.  Open and empty a report file.  Returns null,
// with a report, if it does not open.
FILE *report_file_open(const char *path, const char *caller);
// Write the report, close the file and release `out`.  Returns 1, with a report, if
// memory ran out while `out` was filled, else 0.
int report_file_close(FILE *file, text_builder *out, const char *caller);

// registry/table_hashes.cpp.  Resize the arrays of hashes to that many tables.
// Returns false if there is no memory.
bool hashes_resize(vek_db_rec *db, int capacity);
void hashes_release(vek_db_rec *db);
// Store the hashes of the table that is about to be appended.
void hashes_append(vek_db_rec *db, const vek_tbl_rec *table);
// The first table of a database with that class or extension; null if there is
// none, or no database.
vek_tbl_rec *table_of_class(const vek_db_rec *db, const char *file_class);
vek_tbl_rec *table_of_ext(const vek_db_rec *db, const char *ext);

// registry/tables.cpp.  Append a table to one database.  Returns false, with
// "malloc_failure" reported, if there is no memory, and without a report if a
// string is too long for its field.
bool table_append(vek_db_rec *db, const char *file_class, const char *dir, const char *ext,
                  int cfg_index);
// Remove and release the last table of a database.
void table_pop(vek_db_rec *db);
