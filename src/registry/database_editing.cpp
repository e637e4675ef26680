// Adding, removing and moving databases, and the database report.

#include "host/message.h"
#include "registry/registry.h"
#include "text/text.h"

#include <cstring>

// Only the pointers move, so that pointers into the records stay valid.
static void move_record(int from, int to)
{
    vek_db_rec *moved = vek_list[from];
    size_t count = static_cast<size_t>(from < to ? to - from : from - to);
    if (from < to)
        memmove(vek_list + from, vek_list + from + 1, count * sizeof *vek_list);
    else
        memmove(vek_list + to + 1, vek_list + to, count * sizeof *vek_list);
    vek_list[to] = moved;
}

int vorn_vek_db_reorder(const char *name, int level)
{
    constexpr const char *caller = "vorn_vek_db_reorder";
    if (level < 1) {
        report(REPORT_ERROR, caller,
               "Level : '%i' is invalid; Level '1' is the lowest level allowed.", level);
        return 1;
    }
    if (level > number_of_veks) {
        report(REPORT_ERROR, caller,
               "Level : '%i' is invalid; There are only '%i' levels currently defined.", level,
               number_of_veks);
        return 1;
    }
    int current = vorn_vek_db2level(name);
    if (current == -1) {
        report(REPORT_ERROR, caller, "The database : '%s' does not exist.  Action ignored.",
               text_or_empty(name));
        return 1;
    }
    if (level > db_count())
        return 1; // the host has set a count beyond the last database
    move_record(current - 1, level - 1);
    return 0;
}

// Move the database that the first word of an item names to level 1.  Returns 0,
// also if there is no word, or 2 if it names no database.
static int move_to_front(text_span item)
{
    char name[VEK_PATH_SIZE]; // a word too long for it is no database's name
    const char *end = item.start + item.length;
    const char *rest = item.start;
    text_span word = text_next_word(&rest);
    if (word.start >= end)
        return 0;
    if (rest > end)
        word.length = static_cast<size_t>(end - word.start);
    text_copy(name, word);
    if (vorn_vek_db2level(name) == -1 && strcmp(name, "shared") == 0)
        text_join(name, {vek_product_name(), "_shared"});
    if (vorn_vek_db2level(name) == -1)
        return 2;
    vorn_vek_db_reorder(name, 1);
    return 0;
}

// The names are moved to level 1 from the last to the first, so that the first is
// there in the end.
int vek_db_setorder(const char *statement)
{
    statement = text_or_empty(statement);
    text_next_word(&statement);
    text_span names = text_rest_of_line(&statement);
    if (names.length == 0)
        return 1;
    int result = 0;
    const char *end = names.start + names.length;
    for (const char *pos = end;; --pos) {
        if (pos != names.start && pos[-1] != ',')
            continue;
        if (move_to_front({pos, static_cast<size_t>(end - pos)}) != 0)
            result = 2;
        if (pos == names.start)
            return result;
        end = pos - 1;
    }
}

// Returns whether the name and the path can be those of a database.  Reports the
// first fault.
static bool check_name_and_path(const char *name, const char *path)
{
    constexpr const char *caller = "vorn_vek_db_add";
    if (*name == '\0')
        vek_err(caller, "A database name must be specified to add it to the vek_list.");
    else if (*path == '\0')
        vek_err(caller, "A database path must be specified to add it to the vek_list.");
    else if (strlen(name) >= VEK_DB_NAME_SIZE)
        report(REPORT_ERROR, caller, "The database alias name is too long (MAX length is %d).",
               VEK_DB_NAME_SIZE - 1);
    else if (strlen(path) >= VEK_PATH_SIZE)
        report(REPORT_ERROR, caller, "The database path is too long (MAX length is %d).", 260);
    else
        return true;
    return false;
}

// Report why vek_db_read has rejected a database.  The other codes have no message.
static void report_rejection(int code, const char *name, const char *path)
{
    constexpr const char *caller = "vorn_vek_db_add";
    if (code == 2)
        report(REPORT_ERROR, caller, "Cannot add database : database path '%s' does not exist.",
               path);
    else if (code == 3)
        report(REPORT_ERROR, caller, "Cannot add database : database name '%s' is already defined.",
               name);
    else if (code == 6)
        report(REPORT_ERROR, caller,
               "Cannot add database : database name '%s' is a reserved keyword.", name);
}

// Move the new database from the end of the list to the requested level.
static void move_to_level(const char *name, int level)
{
    constexpr const char *caller = "vorn_vek_db_add";
    if (level < 1 || level > number_of_veks)
        report(REPORT_ERROR, caller,
               "Level '%i' is invalid.  Database added to end of current list.", level);
    else if (vorn_vek_db_reorder(name, level) != 0)
        report(REPORT_ERROR, caller,
               "Database '%s' reorder to level '%i' failed.  Database added to end of current "
               "list.",
               name, level);
}

// The name and the path are copied: they may be in buffers that are overwritten
// below.
int vorn_vek_db_add(const char *name_given, const char *path_given, int level)
{
    char name[VEK_DB_NAME_SIZE];
    char path[VEK_PATH_SIZE];
    char statement[VEK_DB_NAME_SIZE + VEK_PATH_SIZE + 18];
    name_given = text_or_empty(name_given);
    path_given = text_or_empty(path_given);
    if (!check_name_and_path(name_given, path_given))
        return 1;
    text_copy(name, name_given);
    text_copy(path, path_given);
    text_join(statement, {"DATABASE     ", name, "     ", path});
    int code = vek_db_read(statement, vek_private_cfg_index);
    if (code != 0) {
        report_rejection(code, name, path);
        return code;
    }
    vek_upd_vek_tbls(number_of_veks);
    move_to_level(name, level);
    vorn_wrt_cfg("vorn_vek_db_add", name);
    return 0;
}

// The name may be the record's own, so it is copied before the record is released.
int vorn_vek_db_remove(const char *name)
{
    constexpr const char *caller = "vorn_vek_db_remove";
    const char *chosen = vorn_vek_get_write_default();
    if (chosen != nullptr && vek_strcasecmp(chosen, name) == 0) {
        report(REPORT_ERROR, caller,
               "The database : '%s' is the default for writing files.  Action ignored.",
               text_or_empty(name));
        return 1;
    }
    int level = vorn_vek_db2level(name);
    if (level == -1) {
        report(REPORT_ERROR, caller, "The database : '%s' does not exist.  Action ignored.",
               text_or_empty(name));
        return 1;
    }
    char name_copy[VEK_DB_NAME_SIZE];
    text_copy(name_copy, name);
    db_unlink(level);
    vorn_wrt_cfg("vorn_vek_db_remove", name_copy);
    return 0;
}

// The mark before a name in the database report.
static const char *mark_of(const vek_db_rec *db)
{
    const char *chosen = vorn_vek_get_write_default();
    if (chosen != nullptr && vek_strcasecmp(chosen, db->name) == 0)
        return "**";
    return db->writable != 0 ? " *" : "  ";
}

int vek_db_list_print(text_builder *out)
{
    for (int level = 1; level <= db_count(); ++level)
        db_at(level)->writable = vek_dir_is_writable(db_at(level)->path);
    for (int level = 1; level <= db_count(); ++level) {
        const vek_db_rec *db = db_at(level);
        char label[32];
        snprintf(label, sizeof label, "   Level %i :", level);
        builder_print(out, "%-18s %s%-30s %-s\n", label, mark_of(db), db->name, db->path);
    }
    builder_print(out, "\n\n '*' indicates a writable database.\n");
    builder_print(out, "'**' indicates the default writable database.\n");
    return 0;
}

int vorn_vek_db_info(const char *path)
{
    constexpr const char *caller = "vorn_vek_db_info";
    constexpr const char *row = "%-20s %-30s %-s\n";
    if (text_is_empty(path))
        return 0;
    FILE *file = report_file_open(path, caller);
    if (file == nullptr)
        return 1;
    text_builder out = {};
    builder_print(&out, "Current VEK search directories :\n");
    builder_print(&out, row, "Search level", "Database alias name", "Path of database");
    builder_print(&out, row, "------------", "-------------------", "----------------");
    vek_db_list_print(&out);
    return report_file_close(file, &out, caller);
}
