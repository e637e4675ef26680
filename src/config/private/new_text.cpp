// The new text of the private file: its old text, updated line by line, or the sections
// of a new file or a save.

#include "config/private/private.h"
#include "host/environment.h"
#include "text/text.h"

#include <cstring>

// ---- Sections ----

constexpr size_t section_chunk = 1022; // characters of a line of the old text

static const char rule[] =
    "!----------------------------------------------------------------------!\n";

static bool is_personal(int cfg_index)
{
    return cfg_index == vek_private_cfg_index;
}

static void open_section(text_builder *out, const char *title, const char *columns)
{
    builder_print(out, "!\n%s! - %s\n%s%s", rule, title, columns, rule);
}

// Write an ENVIRONMENT statement of the old text with the variable's present value, or
// unchanged if that can't be written.  Ignores other lines.
static void refresh_environment_line(text_builder *out, const char *line, size_t length)
{
    char statement[section_chunk + 2];
    char variable[section_chunk + 2];
    text_truncate(statement, sizeof statement, line);
    statement[strcspn(statement, "!")] = '\0';
    const char *rest = statement;
    bool is_environment = text_equals_nocase(text_next_word(&rest), "environment");
    text_copy(variable, text_next_word(&rest));
    if (!is_environment || text_next_word(&rest).length == 0 ||
        write_environment(out, variable, "\n"))
        return;
    while (length > 0 && (line[length - 1] == '\n' || line[length - 1] == '\r'))
        --length;
    builder_append(out, line, length);
    builder_append(out, "\n", 1);
}

static void _vek_print_env_section(text_builder *out, write_mode mode, cfg_text *old)
{
    open_section(out, "List of personal environment variables", "");
    if (mode == WRITE_SAVE) {
        char line[section_chunk + 2];
        size_t length = 0;
        while ((length = read_line_chunk(old, line, section_chunk, LINE_TEXT)) > 0)
            refresh_environment_line(out, line, length);
        return;
    }
    builder_print(out, "! %s\n", "Desired user mode (standard/expert)");
    builder_print(out, "%-14s%s\n", "ENVIRONMENT", "KLV_VORN_USERMODE        standard");
}

static void write_personal_databases(text_builder *out)
{
    for (int level = 1; level <= db_count(); ++level)
        if (is_personal(db_at(level)->cfg_index))
            write_database(out, db_at(level)->name, "\n");
    write_default(out, "\n");
}

static void write_first_database(text_builder *out)
{
    builder_print(out, "%-13s%-18s$HOME/private.vek\n", "DATABASE", "private");
    builder_print(out, "%s", "! Example database entry:\n");
    builder_print(out, "%s", "!DATABASE     proto_2000        /usr/people/ordella/prototype.vek\n");
    builder_print(out, "%-20s%s\n", "DEFAULT_WRITE_DB", "private");
}

static void print_order_section(text_builder *out, write_mode mode)
{
    if (!env_is("KLV_VEK_SEARCH", "yes"))
        return;
    open_section(out, "Desired database search order", "");
    if (mode == WRITE_SAVE)
        write_order(out, "\n");
    else
        builder_print(out, "%-18sprivate, shared\n", "DATABASE_ORDER");
}

static void _vek_print_db_section(text_builder *out, write_mode mode)
{
    open_section(out, "List of personal database directories",
                 "!            Database name     Path of Database\n");
    if (mode == WRITE_SAVE)
        write_personal_databases(out);
    else
        write_first_database(out);
    print_order_section(out, mode);
}

// This and the next two functions return the number of statements written.
static int write_personal_tables(text_builder *out)
{
    int count = 0;
    const vek_db_rec *first = db_at(1);
    for (int i = 0; first != nullptr && i < first->tbl_count; ++i)
        if (is_personal(first->tbls[i]->cfg_index) && write_table(out, first->tbls[i]))
            ++count;
    return count;
}

static int write_personal_propfiles(text_builder *out)
{
    int count = 0;
    const vek_dflt_list *list = vek_propfile_defaults;
    for (int i = 0; list != nullptr && i < list->count; ++i)
        if (is_personal(list->entries[i]->cfg_index) && write_propfile(out, list->entries[i]))
            ++count;
    return count;
}

static int write_personal_testrigs(text_builder *out)
{
    int count = 0;
    const vek_dflt_list *list = vek_testrig_defaults;
    for (int i = 0; list != nullptr && i < list->count; ++i)
        if (is_personal(list->entries[i]->cfg_index) && write_testrig(out, list->entries[i]))
            ++count;
    return count;
}

static void _vek_print_tbl_section(text_builder *out, write_mode mode)
{
    open_section(out, "List of personal tables directories",
                 "!            Type class            Name of table              Extension\n");
    if (mode == WRITE_SAVE && write_personal_tables(out) > 0)
        return;
    builder_print(out, "%s", "! Example table entry:\n");
    builder_print(out, "%s",
                  "!TABLE        example               example.tbl                      exa\n");
}

static void _vek_print_propfile_section(text_builder *out, write_mode mode)
{
    open_section(out, "List of personal default property files",
                 "!            Type class         Default property file\n");
    if (mode == WRITE_SAVE && write_personal_propfiles(out) > 0)
        return;
    builder_print(out, "%s", "! Example property file entry:\n");
    builder_print(out, "%s", "!PROPFILE     damper            <private>/dampers.tbl/myfile.dpr\n");
}

static void _vek_print_testrig_section(text_builder *out, write_mode mode)
{
    open_section(out, "List of personal default testrigs",
                 "!            Assembly class        Name of testrig\n");
    if (mode == WRITE_SAVE && write_personal_testrigs(out) > 0)
        return;
    builder_print(out, "%s", "! Example testrig entry:\n");
    builder_print(out, "%-12s %-18s %s\n", "!TESTRIG", "suspension", ".__MY_TESTRIG");
}

static void write_sections(text_builder *out, write_mode mode, cfg_text *old)
{
    builder_print(out, "%s! ************  %s Private Configuration File  ************\n%s", rule,
                  vek_product_string(), rule);
    _vek_print_env_section(out, mode, old);
    _vek_print_db_section(out, mode);
    _vek_print_tbl_section(out, mode);
    _vek_print_propfile_section(out, mode);
    _vek_print_testrig_section(out, mode);
}

// ---- Updating the old text line by line ----

constexpr size_t merge_chunk = 255;

struct merge_state {
    text_builder *out;
    const char *inserted; // the database to add before the first one; null if none or done
    const char *removed;  // the database whose lines become comments; null if none
    const char *default_line_ending;
};

// The line ending of a line or chunk; `other` if it has none.
static const char *line_ending(const char *line, size_t length, const char *other)
{
    if (length == 0 || line[length - 1] != '\n')
        return other;
    return length > 1 && line[length - 2] == '\r' ? "\r\n" : "\n";
}

// The line ending of the first line, for chunks that have none.
static const char *default_line_ending(const cfg_text *text)
{
    const char *bytes = text->bytes.bytes;
    const void *newline =
        text->bytes.length == 0 ? nullptr : memchr(bytes, '\n', text->bytes.length);
    return newline == nullptr
               ? "\n"
               : line_ending(bytes,
                             static_cast<size_t>(static_cast<const char *>(newline) - bytes) + 1,
                             "");
}

static void insert_database(merge_state *state, const char *end)
{
    if (state->inserted != nullptr)
        write_database(state->out, state->inserted, end);
    state->inserted = nullptr;
}

// Comment out a line that defines the removed database.
static void mark_removed(const merge_state *state, text_span name)
{
    if (state->removed != nullptr && name.length > 0 && name.length == strlen(state->removed) &&
        memcmp(name.start, state->removed, name.length) == 0)
        builder_append(state->out, "! ", 2);
}

static bool write_variable(const merge_state *state, text_span name, const char *end)
{
    char variable[merge_chunk + 1];
    text_copy(variable, name);
    return write_environment(state->out, variable, end);
}

// Write what replaces the line, if anything, and what precedes it.  Returns whether the
// line was replaced.
static bool replace_line(merge_state *state, const char *line, size_t length)
{
    const char *rest = line;
    const char *end = line_ending(line, length, state->default_line_ending);
    text_span keyword = text_next_word(&rest);
    text_span operand = text_next_word(&rest);
    if (text_equals_nocase(keyword, "database")) {
        insert_database(state, end);
        mark_removed(state, operand);
        return false;
    }
    if (text_equals_nocase(keyword, "database_order")) {
        write_order(state->out, end);
        return true;
    }
    if (text_equals_nocase(keyword, "default_write_db"))
        return write_default(state->out, end);
    return text_equals_nocase(keyword, "environment") && write_variable(state, operand, end);
}

void write_new_text(text_builder *out, cfg_text *old, write_mode mode, const char *name)
{
    if (mode == WRITE_TEMPLATE || mode == WRITE_SAVE) {
        write_sections(out, mode, old);
        return;
    }
    name = *name == '\0' ? nullptr : name;
    merge_state state = {out, mode == WRITE_ADDED ? name : nullptr,
                         mode == WRITE_REMOVED ? name : nullptr, default_line_ending(old)};
    char line[merge_chunk + 2];
    size_t length = 0;
    while ((length = read_line_chunk(old, line, merge_chunk, LINE_BYTES)) > 0)
        if (!replace_line(&state, line, length))
            builder_append(out, line, length);
}
