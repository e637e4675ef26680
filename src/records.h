// The records of the registries and the process-wide state that several folders
// read.  The comment before a declaration names the source that defines it.

#pragma once

#include "vek.h"

#include <cstdint>

// One table in one database.  The strings and the index never change.
// (`class` itself is a keyword.)
struct vek_tbl_rec {
    char class_[VEK_CLASS_SIZE];
    char dir[VEK_TBL_DIR_SIZE];
    char alias[70];                    // "<database>/dir"
    char full_path[VEK_TBL_PATH_SIZE]; // "path of the database/dir"
    char ext[VEK_EXT_SIZE];
    int cfg_index;
    bool loss_is_reported; // that the private file cannot hold it
    bool dir_is_listed;    // found in the directory listing in progress
    bool dir_existed;      // at the last check
};

// The strings by which a table is found.
enum { TABLE_CLASS, TABLE_EXT, TABLE_ALIAS, TABLE_KEY_COUNT };

// One database.  Every database has the same tables in the same order.
struct vek_db_rec {
    char name[VEK_DB_NAME_SIZE];
    char path[VEK_PATH_SIZE];
    int writable; // at the last probe
    int tbl_count;
    int tbl_capacity;
    int cfg_index;
    vek_tbl_rec **tbls; // null until the first table
    bool loss_is_reported;
    uint32_t name_hash;
    uint32_t *tbl_hashes[TABLE_KEY_COUNT]; // in the order of `tbls`, of the same capacity
    // The database that was in the same slot, hidden by a lower number_of_veks, when
    // this one was added; or null.
    vek_db_rec *replaced;
};

// The default of one class.
struct vek_dflt_rec {
    char class_[VEK_CLASS_SIZE];
    char value[VEK_PATH_SIZE];
    int cfg_index; // of the file that last set it; the private file's for the host
    bool loss_is_reported;
};

struct vek_dflt_list {
    int count;
    int capacity;
    vek_dflt_rec **entries; // null until the first entry
};

// registry/defaults.cpp.  Null until a default is first stored.
extern vek_dflt_list *vek_propfile_defaults;
extern vek_dflt_list *vek_testrig_defaults;

// registry/databases.cpp.  Slot 0 is level 1.  A host can set number_of_veks to
// any value, so code iterates with db_count and db_at instead.
extern vek_db_rec **vek_list;
extern int number_of_veks;
extern int vek_list_capacity;

// The number of databases in use: number_of_veks, but not less than 0 nor more than
// are stored.
int db_count();
// The database at a level, or null.
vek_db_rec *db_at(int level);
// The database with a name, or null.
vek_db_rec *db_find(const char *name);

// registry/table_hashes.cpp.  The first table of a database with that alias,
// "<database>/dir"; null if there is none.
vek_tbl_rec *table_of_alias(const vek_db_rec *db, const char *alias);

// config/session_start.cpp.  Records with this configuration index are the user's.
extern int vek_private_cfg_index;

// config/cfg_index.cpp.  The files of the latest start are in the first
// vek_cfg_count slots; those of an earlier start remain in the slots after them.
extern char vek_cfg_files[VEK_CFG_FILE_COUNT][VEK_CFG_PATH_SIZE];
extern int vek_cfg_count;
// The file that was read under a configuration index, in whichever start; the
// empty string if there is none.
const char *cfg_file_of(int cfg_index);
