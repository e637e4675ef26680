// The sections of the private file: as a new file has them, and as a save
// writes them from the session.

#include "config/private_file.h"
#include "records.h"
#include "text/text.h"

#include <cstdlib>
#include <cstring>

static const char rule[] =
    "!----------------------------------------------------------------------!\n";

static bool is_personal(int cfg_index)
{
    return cfg_index == vek_private_cfg_index;
}

static void open_section(FILE *out, const char *title, const char *columns)
{
    fprintf(out, "!\n%s! - %s\n%s%s", rule, title, columns, rule);
}

// Each ENVIRONMENT statement of the old text with the variable's present value.
// One that can't be written anew stays as it was.
static void renew_variable(FILE *out, const private_line *line)
{
    char statement[sizeof line->text];
    char variable[sizeof line->text];
    text_cut(statement, sizeof statement, line->text);
    statement[strcspn(statement, "!")] = '\0';
    const char *rest = statement;
    bool is_environment = text_is(text_take_word(&rest), "environment");
    text_copy(variable, text_take_word(&rest));
    if (!is_environment || text_take_word(&rest).length == 0 ||
        write_environment(out, variable, "\n"))
        return;
    fwrite(line->text, 1, line->length, out);
    fputs(*end_of(line, "") == '\0' ? "\n" : "", out);
}

void _vek_print_env_section(FILE *out, const char *tag, FILE *old)
{
    open_section(out, "List of personal environment variables", "");
    if (is_save(tag)) {
        private_line line;
        while (old != nullptr && take_line(&line, old, 1022))
            renew_variable(out, &line);
        return;
    }
    fprintf(out, "! %s\n", "Desired user mode (standard/expert)");
    fprintf(out, "%-14s%s\n", "ENVIRONMENT", "KLV_VORN_USERMODE        standard");
}

static void write_personal_databases(FILE *out)
{
    for (int level = 1; level <= db_count(); ++level)
        if (is_personal(db_at(level)->cfg_index))
            write_database(out, db_at(level)->name, "\n");
    write_default(out, "\n");
}

static void write_first_database(FILE *out)
{
    fprintf(out, "%-13s%-18s$HOME/private.vek\n", "DATABASE", "private");
    fputs("! Example database entry:\n", out);
    fputs("!DATABASE     proto_2000        /usr/people/ordella/prototype.vek\n", out);
    fprintf(out, "%-20s%s\n", "DEFAULT_WRITE_DB", "private");
}

static void print_order_section(FILE *out, const char *tag)
{
    const char *search = getenv("KLV_VEK_SEARCH");
    if (search == nullptr || strcmp(search, "yes") != 0)
        return;
    open_section(out, "Desired database search order", "");
    if (is_save(tag))
        write_order(out, "\n");
    else
        fprintf(out, "%-18sprivate, shared\n", "DATABASE_ORDER");
}

void _vek_print_db_section(FILE *out, const char *tag)
{
    open_section(out, "List of personal database directories",
                 "!            Database name     Path of Database\n");
    if (is_save(tag))
        write_personal_databases(out);
    else
        write_first_database(out);
    print_order_section(out, tag);
}

// A statement with a line end would be two.
static bool has_line_end(const char *text)
{
    return strpbrk(text, "\r\n") != nullptr;
}

// These give the number of statements written.
static int write_personal_tables(FILE *out)
{
    int count = 0;
    const vek_db_rec *first = db_at(1);
    for (int i = 0; first != nullptr && i < first->tbl_count; ++i) {
        const vek_tbl_rec *table = first->tbls[i];
        if (!is_personal(table->cfg_index))
            continue;
        fprintf(out, "%-12s %-23s %-26s %s\n", "TABLE", table->class_, table->dir, table->ext);
        ++count;
    }
    return count;
}

static int write_personal_defaults(FILE *out, const char *keyword, const vek_dflt_list *list,
                                   bool as_aliases)
{
    int count = 0;
    for (int i = 0; list != nullptr && i < list->count; ++i) {
        const vek_dflt_rec *entry = list->entries[i];
        if (!is_personal(entry->cfg_index) || has_line_end(entry->class_) ||
            has_line_end(entry->value))
            continue;
        char value[VEK_PATH_SIZE];
        text_copy(value, entry->value);
        fprintf(out, "%-12s %-18s %s\n", keyword, entry->class_,
                as_aliases ? vorn_vek_path2alias(value) : value);
        ++count;
    }
    return count;
}

void _vek_print_tbl_section(FILE *out, const char *tag)
{
    open_section(out, "List of personal tables directories",
                 "!            Type class            Name of table              Extension\n");
    if (is_save(tag) && write_personal_tables(out) > 0)
        return;
    fputs("! Example table entry:\n", out);
    fputs("!TABLE        example               example.tbl                      exa\n", out);
}

void _vek_print_propfile_section(FILE *out, const char *tag)
{
    open_section(out, "List of personal default property files",
                 "!            Type class         Default property file\n");
    if (is_save(tag) && write_personal_defaults(out, "PROPFILE", vek_propfile_defaults, true) > 0)
        return;
    fputs("! Example property file entry:\n", out);
    fputs("!PROPFILE     damper            <private>/dampers.tbl/myfile.dpr\n", out);
}

void _vek_print_testrig_section(FILE *out, const char *tag)
{
    open_section(out, "List of personal default testrigs",
                 "!            Assembly class        Name of testrig\n");
    if (is_save(tag) && write_personal_defaults(out, "TESTRIG", vek_testrig_defaults, false) > 0)
        return;
    fputs("! Example testrig entry:\n", out);
    fprintf(out, "%-12s %-18s %s\n", "!TESTRIG", "suspension", ".__MY_TESTRIG");
}

bool write_all_sections(FILE *out, const char *tag, FILE *old)
{
    fprintf(out, "%s! ************  %s Private Configuration File  ************\n%s", rule,
            vek_product_string(), rule);
    _vek_print_env_section(out, tag, old);
    _vek_print_db_section(out, tag);
    _vek_print_tbl_section(out, tag);
    _vek_print_propfile_section(out, tag);
    _vek_print_testrig_section(out, tag);
    return old == nullptr || ferror(old) == 0;
}
