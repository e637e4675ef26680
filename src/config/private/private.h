// What the sources that write the private file share.

#pragma once

#include "config/cfg_text.h"
#include "platform/durable.h"
#include "records.h"
#include "text/builder.h"

#include <cstdio>

// What becomes of the file's text, as the caller's tag says.
enum write_mode {
    WRITE_TEMPLATE, // "vek_chk_cfg_files": what a new file starts with
    WRITE_SAVE,     // "vorn_sav_cfg": what is the user's in this session
    WRITE_ADDED,    // "vorn_vek_db_add": the old text, brought up to date, with a new database
    WRITE_REMOVED,  // "vorn_vek_db_remove": the same, with a removed one as a comment
    WRITE_UPDATED   // any other: the old text, brought up to date
};

enum backup_mode {
    BACKUP_NONE,
    BACKUP_SILENT,
    BACKUP_VERBOSE, // the user's wish: without it nothing is written
    BACKUP_REPEATED // the same, reported already
};

struct private_update {
    char path[VEK_PATH_SIZE]; // as it is named; empty if it is too long
    write_mode mode;
    char name[VEK_PATH_SIZE]; // of the database
    backup_mode backup;
    bool only_creates; // text that is there by now is left alone

    // While it goes on:
    int64_t deadline;         // of waiting for locks
    intptr_t lock;            // -1: there is no file yet
    intptr_t temp_lock;       // of the directory for temporary files
    char target[4096];        // the file that the path leads to
    file_state read;          // the file that the new text is made for
    int unread;               // the errno value with which it did not open for a backup, or 0
    char copy[VEK_PATH_SIZE]; // of the old text; empty if there is none
    cfg_text old;             // the old text; empty for a template
    text_builder text;        // the new text
    new_file made;            // holds it; none if it has to go over the old text
};

// config/private/steps.cpp.  Each step is false after a report, but `replace`.
bool lock_file(private_update *state);
bool is_there_already(const private_update *state); // nothing is to be done
bool back_up(private_update *state);
bool save_copy(private_update *state);
bool write_new_file(private_update *state);
// UPDATE_AGAIN: another program has changed the file meanwhile.
enum update_result { NOT_UPDATED, UPDATED, UPDATE_AGAIN };
update_result replace(private_update *state);
void remove_copies(private_update *state);
void unlock_file(private_update *state);
bool report_failure(const private_update *state, const char *reason);

// config/private/new_text.cpp.  Write the new text from the old one, which is gone
// through.  `name` is the database of WRITE_ADDED and WRITE_REMOVED.
void compose_text(text_builder *out, cfg_text *old, write_mode mode, const char *name);

// config/private/statements.cpp.  Write a statement from what the process holds
// now, with `end` after it.  False, and nothing written, if there is nothing that
// the next session would read as the same; where that is the user's record, the
// user is told, once.
bool write_environment(text_builder *out, const char *variable, const char *end);
bool write_default(text_builder *out, const char *end);
bool write_database(text_builder *out, const char *name, const char *end);
bool write_table(text_builder *out, vek_tbl_rec *table);
bool write_propfile(text_builder *out, vek_dflt_rec *entry);
bool write_testrig(text_builder *out, vek_dflt_rec *entry);
void write_order(text_builder *out, const char *end);
