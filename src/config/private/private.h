// What the sources that write the private file share.

#pragma once

#include "config/cfg_text.h"
#include "platform/durable.h"
#include "records.h"
#include "text/builder.h"

#include <cstdio>

// What is written, as the caller's tag requires.
enum write_mode {
    WRITE_TEMPLATE, // "vek_chk_cfg_files": the contents of a new file
    WRITE_SAVE,     // "vorn_sav_cfg": the user's settings of this session
    WRITE_ADDED,    // "vorn_vek_db_add": the old text, updated, with a new database
    WRITE_REMOVED,  // "vorn_vek_db_remove": the same, with a removed one as a comment
    WRITE_UPDATED   // any other tag: the old text, updated
};

enum backup_mode {
    BACKUP_NONE,
    BACKUP_SILENT,
    BACKUP_VERBOSE, // the user requires it: nothing is written without it
    BACKUP_REPEATED // the same, after it was reported
};

struct private_update {
    char path[VEK_PATH_SIZE]; // of the private file; empty if it is too long
    write_mode mode;
    char name[VEK_PATH_SIZE]; // of the database
    backup_mode backup;
    bool only_creates; // a file that is not empty is left alone

    // During the update:
    int64_t deadline;         // of waiting for locks
    intptr_t lock;            // -1 if the file does not exist yet
    intptr_t temp_lock;       // of the directory for temporary files
    char target[4096];        // `path` with symbolic links followed
    file_state read;          // the file that the new text is made for
    int unread;               // the errno value if it did not open for a backup, or 0
    char copy[VEK_PATH_SIZE]; // path of a copy of the old text; empty if there is none
    cfg_text old;             // the old text; empty for a template
    text_builder text;        // the new text
    new_file created;         // has the new text; none if the old file has to be overwritten
};

// config/private/steps.cpp.  Each step returns false after a report, except for
// replace_private_file.
bool lock_private_file(private_update *state);
bool needs_no_update(const private_update *state);
bool back_up_private_file(private_update *state);
bool load_old_text(private_update *state);
bool write_new_file(private_update *state);
// UPDATE_AGAIN: another program changed the file in the meantime.
enum update_result { NOT_UPDATED, UPDATED, UPDATE_AGAIN };
update_result replace_private_file(private_update *state);
void remove_copies(private_update *state);
void unlock_private_file(private_update *state);
bool report_failure(const private_update *state, const char *reason); // returns false

// config/private/new_text.cpp.  Append the new text to `out`.  Reads `old` to its end.
// `name` is the database of WRITE_ADDED and WRITE_REMOVED; not null.
void write_new_text(text_builder *out, cfg_text *old, write_mode mode, const char *name);

// config/private/statements.cpp.  Append a statement with the present value from the
// process, followed by `end`.  False, and nothing appended, if there is none that the
// next session would read as the same value.  If a record of the user's can't be kept
// for this reason, the first call for it prints a warning.
bool write_environment(text_builder *out, const char *variable, const char *end);
bool write_default(text_builder *out, const char *end);
bool write_database(text_builder *out, const char *name, const char *end);
bool write_table(text_builder *out, vek_tbl_rec *table);
bool write_propfile(text_builder *out, vek_dflt_rec *entry);
bool write_testrig(text_builder *out, vek_dflt_rec *entry);
void write_order(text_builder *out, const char *end);
