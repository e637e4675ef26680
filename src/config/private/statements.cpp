// The statements that the private file takes over from the running session.

#include "config/private/private.h"
#include "host/environment.h"
#include "host/message.h"
#include "platform/platform.h"
#include "text/text.h"

#include <algorithm>
#include <cstring>

constexpr size_t longest_statement = 266; // that the reader accepts

// ---- What the next session can read ----

// Whether a reader would parse the string as one word.
static bool is_word(const char *text)
{
    const char *rest = text;
    text_span word = text_next_word(&rest);
    return word.length > 0 && word.start == text && *rest == '\0' && strchr(text, '!') == nullptr;
}

// In columns, or with single spaces if that is too long.
static bool append_statement(text_builder *out, const char *keyword, const char *name,
                             const char *value, const char *end)
{
    size_t keyword_length = strlen(keyword), name_length = strlen(name), rest = strlen(value) + 1;
    if (keyword_length + 1 + name_length + rest > longest_statement)
        return false;
    if (std::max<size_t>(keyword_length, 13) + std::max<size_t>(name_length, 18) + rest <=
        longest_statement)
        builder_print(out, "%-13s%-18s %s%s", keyword, name, value, end);
    else
        builder_print(out, "%s %s %s%s", keyword, name, value, end);
    return true;
}

// Returns false.
static bool report_once(bool *is_reported, const char *what, const char *name)
{
    if (!*is_reported)
        report(REPORT_WARNING, "_vek_print_cfg_file",
               "%s '%s' cannot be kept in the private cfg file; it is known in this session only.",
               what, name);
    *is_reported = true;
    return false;
}

// ---- ENVIRONMENT ----

// False if a reader would reject the statement, truncate the value at "!", or read part
// of the value as a line ending.
static bool fits_statement(const char *variable, const char *value)
{
    constexpr size_t longest_value = 180, longest_line = 254;
    const char *rest = value;
    size_t name_length = strlen(variable);
    size_t value_length = strlen(value);
    size_t length = 14 + (name_length < 22 ? 22 : name_length) + 3 + value_length;
    return text_next_word(&rest).length > 0 && value_length <= longest_value &&
           length <= longest_line && strpbrk(value, "!\n") == nullptr &&
           value[value_length - 1] != '\r';
}

bool write_environment(text_builder *out, const char *variable, const char *end)
{
    const char *value = env_value(variable);
    if (value == nullptr || !fits_statement(variable, value))
        return false;
    builder_print(out, "%-14s%-22s", "ENVIRONMENT", variable);
    builder_print(out, "   %s%s", value, end);
    return true;
}

// ---- DATABASE and what names databases ----

// Guards protect white space at either end of a path: a reader would remove it.
static const char *leading_guard(const char *path)
{
    return *path != '\0' && strchr(" \t\r\v\f", *path) != nullptr ? "./" : "";
}

static const char *trailing_guard(const char *path)
{
    size_t length = strlen(path);
    return length > 0 && strchr(" \t\r", path[length - 1]) != nullptr ? "/" : "";
}

static bool append_database(text_builder *out, const char *name, const char *path, const char *end)
{
    char value[VEK_PATH_SIZE + 3];
    return is_word(name) && strlen(name) < VEK_DB_NAME_SIZE && strcmp(name, "shared") != 0 &&
           *path != '\0' && strpbrk(path, "!$\n") == nullptr &&
           text_join(value, {leading_guard(path), path, trailing_guard(path)}) &&
           append_statement(out, "DATABASE", name, value, end);
}

// Whether the next session will know the database by this name, from this file or from
// the one that defines it.
static bool will_be_known(const vek_db_rec *db)
{
    text_builder ignored = {};
    bool is_kept =
        db->cfg_index != vek_private_cfg_index || append_database(&ignored, db->name, db->path, "");
    builder_release(&ignored);
    return is_kept;
}

bool write_database(text_builder *out, const char *name, const char *end)
{
    char alias[VEK_PATH_SIZE];
    text_copy(alias, name);
    vek_db_rec *db = db_find(name); // a name may have the form of an alias
    const char *path = db != nullptr ? db->path : vorn_vek_alias2path(alias);
    bool is_reported = false;
    return append_database(out, name, path, end) ||
           report_once(db != nullptr ? &db->loss_is_reported : &is_reported, "Database", name);
}

bool write_default(text_builder *out, const char *end)
{
    const char *chosen = vorn_vek_get_write_default();
    const vek_db_rec *db = chosen == nullptr ? nullptr : db_find(chosen);
    if (chosen == nullptr || (db != nullptr && !will_be_known(db)))
        return false;
    builder_print(out, "%-20s%s%s", "DEFAULT_WRITE_DB", chosen, end);
    return true;
}

static bool can_be_ordered(const vek_db_rec *db)
{
    return strchr(db->name, ',') == nullptr && strchr(db->name, '!') == nullptr &&
           will_be_known(db);
}

// The first name that does not fit and all after it are left out.
void write_order(text_builder *out, const char *end)
{
    constexpr size_t limit = 265;
    const char *separator = "";
    snprintf(vek_message_buf, sizeof vek_message_buf, "%-18s", "DATABASE_ORDER");
    for (int level = 1; level <= db_count(); ++level) {
        char item[VEK_DB_NAME_SIZE + 2];
        if (!can_be_ordered(db_at(level)))
            continue;
        text_join(item, {separator, db_at(level)->name});
        if (strlen(vek_message_buf) + strlen(item) >= limit)
            break;
        text_append(vek_message_buf, item);
        separator = ", ";
    }
    builder_print(out, "%s%s", vek_message_buf, end);
}

// ---- TABLE and the defaults of classes ----

bool write_table(text_builder *out, vek_tbl_rec *table)
{
    if (!is_word(table->class_) || !is_word(table->dir) || !is_word(table->ext))
        return report_once(&table->loss_is_reported, "Table of class", table->class_);
    builder_print(out, "%-12s %-23s %-26s %s\n", "TABLE", table->class_, table->dir, table->ext);
    return true;
}

// Whether the alias of a property file resolves to it.  The alias of a file without a
// directory, for instance, does not.
static bool resolves_to(const char *alias, const char *path)
{
    char name[VEK_PATH_SIZE];
    text_copy(name, alias);
    const char *full = vorn_vek_input2full(name);
    return strcmp(full, path) == 0 || platform_same_file(full, path);
}

bool write_propfile(text_builder *out, vek_dflt_rec *entry)
{
    char path[VEK_PATH_SIZE];
    text_copy(path, entry->value);
    const char *alias = vorn_vek_path2alias(path);
    if (is_word(entry->class_) && is_word(alias) && strchr(alias, '$') == nullptr &&
        resolves_to(alias, entry->value) &&
        append_statement(out, "PROPFILE", entry->class_, alias, "\n"))
        return true;
    return report_once(&entry->loss_is_reported, "Property file of class", entry->class_);
}

bool write_testrig(text_builder *out, vek_dflt_rec *entry)
{
    if (is_word(entry->class_) && is_word(entry->value) &&
        append_statement(out, "TESTRIG", entry->class_, entry->value, "\n"))
        return true;
    return report_once(&entry->loss_is_reported, "Test rig of class", entry->class_);
}
