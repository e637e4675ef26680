// Changing the order of the databases, and the database report.

#include "host/message.h"
#include "registry/registry.h"
#include "text/text.h"

#include <cstring>

// Records change place by their pointers alone, so that pointers into them
// stay good.
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
        return 1; // a count set by the host; no database is there
    move_record(current - 1, level - 1);
    return 0;
}

// The first word of a piece of the line goes to level 1.  Result: 0, also when
// there is no word; 2 if it names no database.
static int put_first(text_span piece)
{
    char name[VEK_PATH_SIZE]; // a word too long for it is no database's name
    const char *end = piece.start + piece.length;
    const char *rest = piece.start;
    text_span word = text_take_word(&rest);
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

// The walk goes from the last name to the first, each to level 1, so that the
// first name is there in the end.
int vek_db_setorder(const char *statement)
{
    statement = text_or_empty(statement);
    text_take_word(&statement);
    text_span names = text_take_rest(&statement);
    if (names.length == 0)
        return 1;
    int result = 0;
    const char *end = names.start + names.length;
    for (const char *place = end;; --place) {
        if (place != names.start && place[-1] != ',')
            continue;
        if (put_first({place, static_cast<size_t>(end - place)}) != 0)
            result = 2;
        if (place == names.start)
            return result;
        end = place - 1;
    }
}

static const char *mark_of(const vek_db_rec *db)
{
    const char *chosen = vorn_vek_get_write_default();
    if (chosen != nullptr && vek_strcasecmp(chosen, db->name) == 0)
        return "**";
    return db->writable != 0 ? " *" : "  ";
}

int vek_db_list_print(FILE *stream)
{
    for (int level = 1; level <= db_count(); ++level)
        db_at(level)->writable = vek_dir_is_writable(db_at(level)->path);
    for (int level = 1; level <= db_count(); ++level) {
        const vek_db_rec *db = db_at(level);
        char label[32];
        snprintf(label, sizeof label, "   Level %i :", level);
        fprintf(stream, "%-18s %s%-30s %-s\n", label, mark_of(db), db->name, db->path);
    }
    fputs("\n\n '*' indicates a writable database.\n", stream);
    fputs("'**' indicates the default writable database.\n", stream);
    return 0;
}

int vorn_vek_db_info(const char *path)
{
    if (text_is_empty(path))
        return 0;
    FILE *file = report_file_open(path, "vorn_vek_db_info");
    if (file == nullptr)
        return 1;
    constexpr const char *row = "%-20s %-30s %-s\n";
    fputs("Current VEK search directories :\n", file);
    fprintf(file, row, "Search level", "Database alias name", "Path of database");
    fprintf(file, row, "------------", "-------------------", "----------------");
    vek_db_list_print(file);
    fclose(file);
    return 0;
}
