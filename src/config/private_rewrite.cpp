// Bringing the text of the private file up to date, line by line.

#include "config/private_file.h"
#include "text/text.h"

#include <cstring>

constexpr size_t piece_limit = 255;

struct rewriting {
    FILE *out;
    const char *inserted; // the database to name before the first one; null if none or done
    const char *removed;  // the database whose lines become comments; null if none
    const char *usual_end;
};

// For pieces that have no end of their own: that of the first line.  Leaves the
// file behind it.
static const char *usual_end_of(FILE *file)
{
    private_line line;
    const char *end = "";
    while (*end == '\0' && take_line(&line, file, piece_limit))
        end = end_of(&line, "");
    return *end == '\0' ? "\n" : end;
}

static void insert_database(rewriting *now, const char *end)
{
    if (now->inserted != nullptr)
        write_database(now->out, now->inserted, end);
    now->inserted = nullptr;
}

static void mark_removed(const rewriting *now, text_span name)
{
    if (now->removed != nullptr && name.length > 0 && name.length == strlen(now->removed) &&
        memcmp(name.start, now->removed, name.length) == 0)
        fputs("! ", now->out);
}

static bool write_variable(const rewriting *now, text_span name, const char *end)
{
    char variable[piece_limit + 1];
    text_copy(variable, name);
    return write_environment(now->out, variable, end);
}

// Whether something else was written in the line's place.
static bool replace_line(rewriting *now, const private_line *line)
{
    const char *rest = line->text;
    const char *end = end_of(line, now->usual_end);
    text_span keyword = text_take_word(&rest);
    text_span operand = text_take_word(&rest);
    if (text_is(keyword, "database")) {
        insert_database(now, end);
        mark_removed(now, operand);
        return false;
    }
    if (text_is(keyword, "database_order")) {
        write_order(now->out, end);
        return true;
    }
    if (text_is(keyword, "default_write_db"))
        return write_default(now->out, end);
    return text_is(keyword, "environment") && write_variable(now, operand, end);
}

// What no statement could name stays out; one with a line end would be two.
static const char *name_or_none(const char *name)
{
    const char *rest = text_or_empty(name);
    bool can_stand = text_take_word(&rest).length > 0 && strpbrk(name, "\r\n") == nullptr;
    return can_stand ? name : nullptr;
}

bool rewrite_text(FILE *out, FILE *old, const char *tag, const char *name)
{
    bool adds = vek_strcasecmp(tag, "vorn_vek_db_add") == 0;
    bool removes = vek_strcasecmp(tag, "vorn_vek_db_remove") == 0;
    name = name_or_none(name);
    rewriting now = {out, adds ? name : nullptr, removes ? name : nullptr, usual_end_of(old)};
    if (fseek(old, 0, SEEK_SET) != 0)
        return false;
    private_line line;
    while (take_line(&line, old, piece_limit))
        if (!replace_line(&now, &line))
            fwrite(line.text, 1, line.length, out);
    return ferror(old) == 0;
}
