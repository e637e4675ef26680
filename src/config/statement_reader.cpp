// Reading a configuration file, statement by statement.

#include "config/config.h"
#include "host/environment.h"
#include "host/hsk.h"
#include "host/message.h"
#include "text/text.h"

#include <cstring>

static const char caller[] = "vek_cfg_read";

// A line that fills the shared message buffer may go on behind it.
constexpr int line_limit = VEK_PATH_SIZE - 1;

struct cfg_parser {
    const char *path;
    int cfg_index;
    int line;
    int error; // code of the latest bad statement
};

static void report_syntax_error(cfg_parser *reading, int code)
{
    report(REPORT_ERROR, caller, "Syntax error in line %d of cfg_file '%s'", reading->line,
           reading->path);
    reading->error = code;
}

static void report_syntax_error_detail(cfg_parser *reading, int code, const char *fault)
{
    report(REPORT_ERROR, caller, "Syntax error in line %d of cfg_file '%s':\n    %s", reading->line,
           reading->path, fault);
    reading->error = code;
}

// What most handlers' results mean: 1 is a plain fault, 2 the handler's own.
static void report_refusal(cfg_parser *reading, int code, const char *fault)
{
    if (code == 1)
        report_syntax_error(reading, code);
    else if (code == 2)
        report_syntax_error_detail(reading, code, fault);
}

static bool read_line(cfg_text *text)
{
    return read_line_chunk(text, vek_message_buf, line_limit, LINE_TEXT) > 0;
}

// The rest of the line is thrown away with it.
static void refuse_long_line(cfg_parser *reading, cfg_text *text)
{
    report(REPORT_ERROR, caller, "%s %d of cfg_file '%s':", "Syntax error in line", reading->line,
           reading->path);
    report(REPORT_ERROR, caller, "%s %d", "  Line exceeds MAX number of characters", line_limit);
    reading->error = 1;
    while (read_line(text) && strlen(vek_message_buf) == line_limit)
        continue;
}

static void print_database_advice(const cfg_parser *reading)
{
    print_line("WARNING in line %d of cfg_file '%s':", reading->line, reading->path);
    vc_str_print(" SHARED_DB and PRIVATE_DB definitions have been");
    vc_str_print(" consolidated into DATABASE definitions.  Please");
    vc_str_print(" update your configuration files either by");
    vc_str_print(" directly editing them or choosing");
    vc_str_print(" \"save configuration\" from inside TAVIK/Vorn");
}

static const char *database_fault(int code)
{
    switch (code) {
    case 2:
        return "database path does not exist.";
    case 3:
        return "database name already defined.";
    case 4:
        return "database alias name too long.";
    default:
        return "database name 'shared' is a reserved keyword.";
    }
}

static void handle_database(cfg_parser *reading, const char *keyword)
{
    char name[VEK_PATH_SIZE]; // taken before the line is overwritten
    const char *line = vek_message_buf;
    text_next_word(&line);
    text_copy(name, text_next_word(&line));

    bool is_private = vek_strcasecmp(keyword, "PRIVATE_DB") == 0;
    int code = vek_db_read(vek_message_buf, reading->cfg_index);
    if (code > 1)
        report_syntax_error_detail(reading, code, database_fault(code));
    if (code == 0 && is_private && vorn_vek_get_write_default() == nullptr)
        vorn_vek_set_write_default_no_cfg_update(name);
    if (is_private || vek_strcasecmp(keyword, "SHARED_DB") == 0)
        print_database_advice(reading);
    if (code == 1)
        report_syntax_error(reading, code);
}

static void print_order_advice(const cfg_parser *reading)
{
    print_line("INFO: line %d of cfg_file '%s':", reading->line, reading->path);
    vc_str_print("      DATABASE_ORDER entry has been discontinued.");
    vc_str_print("      Please remove the line from the file.");
}

static void handle_database_order(cfg_parser *reading)
{
    if (!env_is("KLV_VEK_SEARCH", "yes")) {
        print_order_advice(reading);
        return;
    }
    report_refusal(reading, vek_db_setorder(vek_message_buf), "database name not defined.");
}

static void handle_write_default(cfg_parser *reading)
{
    if (vek_set_write_db(vek_message_buf) != 1)
        return;
    report_syntax_error_detail(reading, 1, "cannot set database as writable default.");
    report_syntax_error(reading, 1);
}

// A bad line is told of but does not count.
static void handle_testrig(cfg_parser *reading)
{
    if (vek_testrig_read(vek_message_buf, reading->cfg_index) != 0)
        report_syntax_error_detail(reading, reading->error,
                                   "wrong number of arguments for TESTRIG entry");
}

// A word that is no keyword of this reader is passed over, and so is
// ENVIRONMENT, which has a reader of its own.
static void handle_statement(cfg_parser *reading, const char *keyword)
{
    if (vek_strcasecmp(keyword, "DATABASE") == 0 || vek_strcasecmp(keyword, "SHARED_DB") == 0 ||
        vek_strcasecmp(keyword, "PRIVATE_DB") == 0)
        handle_database(reading, keyword);
    else if (vek_strcasecmp(keyword, "DATABASE_ORDER") == 0)
        handle_database_order(reading);
    else if (vek_strcasecmp(keyword, "DEFAULT_WRITE_DB") == 0)
        handle_write_default(reading);
    else if (vek_strcasecmp(keyword, "TABLE") == 0)
        report_refusal(reading, vek_tbl_read(vek_message_buf, reading->cfg_index),
                       "class or extension already defined.");
    else if (vek_strcasecmp(keyword, "PROPFILE") == 0)
        report_refusal(reading, vek_propfile_read(vek_message_buf, reading->cfg_index),
                       "property file path does not exist.");
    else if (vek_strcasecmp(keyword, "TESTRIG") == 0)
        handle_testrig(reading);
}

// The line is in the shared message buffer, which every report overwrites.
static void take_line(cfg_parser *reading, cfg_text *text)
{
    char keyword[VEK_PATH_SIZE];
    vek_message_buf[strcspn(vek_message_buf, "\n")] = '\0';
    vek_message_buf[strcspn(vek_message_buf, "!")] = '\0';
    const char *line = vek_message_buf;
    text_copy(keyword, text_next_word(&line));
    if (keyword[0] == '\0')
        return;
    if (strlen(vek_message_buf) == line_limit)
        refuse_long_line(reading, text);
    else
        handle_statement(reading, keyword);
}

int vek_cfg_read(const char *path, int cfg_index)
{
    char kept[4096]; // the path may lie in a buffer that a handler overwrites
    path = text_or_empty(path);
    if (text_copy(kept, path))
        path = kept; // a longer one does not open
    cfg_text text;
    if (!cfg_open(&text, path, caller))
        return 1;
    print_line("Reading configuration file '%s'", path);
    cfg_parser reading = {path, cfg_index, 0, 0};
    while (read_line(&text)) {
        ++reading.line;
        take_line(&reading, &text);
    }
    if (!cfg_close(&text, path, caller) && reading.error == 0)
        reading.error = 1;
    if (reading.error != 0)
        report(REPORT_ERROR, caller, "Erroneous statement(s) ignored in file : '%s'.", path);
    return reading.error;
}
