// The records of the registries and the process-wide state that more than one
// subsystem reads.  Each variable is defined in the source named beside it.

#pragma once

#include "vek.h"

// One table in one database.  All fields are fixed when the record is made.
// (`class` itself is a word of the language.)
struct vek_tbl_rec {
    char class_[VEK_CLASS_SIZE];
    char dir[VEK_TBL_DIR_SIZE];
    char alias[70];                    // "<database>/dir"
    char full_path[VEK_TBL_PATH_SIZE]; // "path of the database/dir"
    char ext[VEK_EXT_SIZE];
    int cfg_index;
    bool loss_is_reported; // that the private file can't hold it
    bool dir_is_listed;    // in the listing that is being gone through
    bool dir_was_there;    // when it was last looked for
};

// One database.  Every database holds the same tables in the same order.
struct vek_db_rec {
    char name[VEK_DB_NAME_SIZE];
    char path[VEK_PATH_SIZE];
    int writable; // of the last probe
    int tbl_count;
    int tbl_capacity;
    int cfg_index;
    vek_tbl_rec **tbls; // null until the first table
    bool loss_is_reported;
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

// registry/databases.cpp.  Slot 0 is level 1.  A host can set number_of_veks
// to anything, so code walks the list by db_count and db_at instead.
extern vek_db_rec **vek_list;
extern int number_of_veks;
extern int vek_list_capacity;

// The databases that are really in the list, whatever number_of_veks says.
int db_count();
// The database at a level, or null.
vek_db_rec *db_at(int level);
// The database of a name, or null.
vek_db_rec *db_find(const char *name);

// registry/table_find.cpp.  The first table of a database with that alias,
// "<database>/dir"; null if there is none.
vek_tbl_rec *table_of_alias(const vek_db_rec *db, const char *alias);

// config/session_start.cpp.  Records with this configuration index are the user's.
extern int vek_private_cfg_index;

// config/cfg_index.cpp.  The files of the latest start stand in the first
// vek_cfg_count slots; what an earlier start had behind them stays.
extern char vek_cfg_files[VEK_CFG_FILE_COUNT][VEK_CFG_PATH_SIZE];
extern int vek_cfg_count;
// The file that was read under a configuration index, in whichever start; the
// empty text if there is none.
const char *cfg_file_of(int cfg_index);
