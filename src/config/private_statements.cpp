// The statements that the private file gets from the running session.

#include "config/private_file.h"
#include "host/message.h"
#include "records.h"
#include "text/text.h"

#include <cstdlib>
#include <cstring>

// What a reader of the statement would refuse, cut at "!" or take for the next
// line or for a part of its own line's end is not written.
static bool can_stand_in_statement(const char *variable, const char *value)
{
    constexpr size_t longest_value = 180, longest_statement = 254;
    const char *rest = value;
    size_t name_length = strlen(variable);
    size_t value_length = strlen(value);
    size_t length = 14 + (name_length < 22 ? 22 : name_length) + 3 + value_length;
    return text_take_word(&rest).length > 0 && value_length <= longest_value &&
           length <= longest_statement && strpbrk(value, "!\n") == nullptr &&
           value[value_length - 1] != '\r';
}

bool write_environment(FILE *out, const char *variable, const char *end)
{
    // getenv alone would find "A=B" where A has a value that begins with "B=".
    const char *value = strchr(variable, '=') == nullptr ? getenv(variable) : nullptr;
    if (value == nullptr || !can_stand_in_statement(variable, value))
        return false;
    fprintf(out, "%-14s%-22s", "ENVIRONMENT", variable);
    fprintf(out, "   %s%s", value, end);
    return true;
}

bool write_default(FILE *out, const char *end)
{
    const char *chosen = vorn_vek_get_write_default();
    if (chosen == nullptr)
        return false;
    fprintf(out, "%-20s%s%s", "DEFAULT_WRITE_DB", chosen, end);
    return true;
}

// White space at either end of a path would be taken for none of it.
static const char *guard_before(const char *path)
{
    return *path != '\0' && strchr(" \t\r\v\f", *path) != nullptr ? "./" : "";
}

static const char *guard_behind(const char *path)
{
    size_t length = strlen(path);
    return length > 0 && strchr(" \t\r", path[length - 1]) != nullptr ? "/" : "";
}

void write_database(FILE *out, const char *name, const char *end)
{
    char alias[VEK_PATH_SIZE];
    text_copy(alias, name);
    const vek_db_rec *db = db_find(name); // whose name may have the form of an alias
    const char *path = db != nullptr ? db->path : vorn_vek_alias2path(alias);
    if (strchr(path, '\n') != nullptr)
        return; // the statement would be two
    const char *before = db != nullptr ? guard_before(path) : "";
    const char *behind = db != nullptr ? guard_behind(path) : "";
    fprintf(out, "%-13s%-18s %s%s%s%s", "DATABASE", name, before, path, behind, end);
}

// The names that do not fit stay out, and so do those behind them.
void write_order(FILE *out, const char *end)
{
    constexpr size_t limit = 265;
    snprintf(vek_message_buf, sizeof vek_message_buf, "%-18s", "DATABASE_ORDER");
    for (int level = 1; level <= db_count(); ++level) {
        char piece[VEK_DB_NAME_SIZE + 2];
        text_join(piece, {level == 1 ? "" : ", ", db_at(level)->name});
        if (strlen(vek_message_buf) + strlen(piece) >= limit)
            break;
        text_append(vek_message_buf, piece);
    }
    fprintf(out, "%s%s", vek_message_buf, end);
}
