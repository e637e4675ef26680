// Reading a configuration file: every statement but ENVIRONMENT.

#include "config/cfg_text.h"
#include "host/environment.h"
#include "host/message.h"
#include "hsk.h"
#include "text/text.h"

#include <cstring>

static const char caller[] = "vek_cfg_read";

// A chunk of this length fills the shared message buffer; the line may continue after it.
constexpr int line_limit = VEK_PATH_SIZE - 1;

struct cfg_parser {
    const char *path;
    int cfg_index;
    int line;
    int error; // code of the latest invalid statement
};

static void report_syntax_error(cfg_parser *parser, int code)
{
    report(REPORT_ERROR, caller, "Syntax error in line %d of cfg_file '%s'", parser->line,
           parser->path);
    parser->error = code;
}

static void report_syntax_error_detail(cfg_parser *parser, int code, const char *detail)
{
    report(REPORT_ERROR, caller, "Syntax error in line %d of cfg_file '%s':\n    %s", parser->line,
           parser->path, detail);
    parser->error = code;
}

// Report the result of most handlers: 1 is a syntax error, 2 a syntax error with a detail.
static void report_handler_result(cfg_parser *parser, int code, const char *detail)
{
    if (code == 1)
        report_syntax_error(parser, code);
    else if (code == 2)
        report_syntax_error_detail(parser, code, detail);
}

static bool read_line(cfg_text *text)
{
    return read_line_chunk(text, vek_message_buf, line_limit, LINE_TEXT) > 0;
}

// Report the line and skip the rest of it.
static void reject_long_line(cfg_parser *parser, cfg_text *text)
{
    report(REPORT_ERROR, caller, "%s %d of cfg_file '%s':", "Syntax error in line", parser->line,
           parser->path);
    report(REPORT_ERROR, caller, "%s %d", "  Line exceeds MAX number of characters", line_limit);
    parser->error = 1;
    while (read_line(text) && strlen(vek_message_buf) == line_limit)
        continue;
}

static void print_database_notice(const cfg_parser *parser)
{
    print_line("WARNING in line %d of cfg_file '%s':", parser->line, parser->path);
    vc_str_print(" SHARED_DB and PRIVATE_DB definitions have been");
    vc_str_print(" consolidated into DATABASE definitions.  Please");
    vc_str_print(" update your configuration files either by");
    vc_str_print(" directly editing them or choosing");
    vc_str_print(" \"save configuration\" from inside TAVIK/Vorn");
}

static const char *database_error(int code)
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

static void handle_database(cfg_parser *parser, const char *keyword)
{
    char name[VEK_PATH_SIZE]; // copied before a report overwrites the line
    const char *line = vek_message_buf;
    text_next_word(&line);
    text_copy(name, text_next_word(&line));

    bool is_private = vek_strcasecmp(keyword, "PRIVATE_DB") == 0;
    int code = vek_db_read(vek_message_buf, parser->cfg_index);
    if (code > 1)
        report_syntax_error_detail(parser, code, database_error(code));
    if (code == 0 && is_private && vorn_vek_get_write_default() == nullptr)
        vorn_vek_set_write_default_no_cfg_update(name);
    if (is_private || vek_strcasecmp(keyword, "SHARED_DB") == 0)
        print_database_notice(parser);
    if (code == 1)
        report_syntax_error(parser, code);
}

static void print_order_notice(const cfg_parser *parser)
{
    print_line("INFO: line %d of cfg_file '%s':", parser->line, parser->path);
    vc_str_print("      DATABASE_ORDER entry has been discontinued.");
    vc_str_print("      Please remove the line from the file.");
}

static void handle_database_order(cfg_parser *parser)
{
    if (!env_is("KLV_VEK_SEARCH", "yes")) {
        print_order_notice(parser);
        return;
    }
    report_handler_result(parser, vek_db_setorder(vek_message_buf), "database name not defined.");
}

static void handle_write_default(cfg_parser *parser)
{
    if (vek_set_write_db(vek_message_buf) != 1)
        return;
    report_syntax_error_detail(parser, 1, "cannot set database as writable default.");
    report_syntax_error(parser, 1);
}

// An invalid line is reported, but does not change the result.
static void handle_testrig(cfg_parser *parser)
{
    if (vek_testrig_read(vek_message_buf, parser->cfg_index) != 0)
        report_syntax_error_detail(parser, parser->error,
                                   "wrong number of arguments for TESTRIG entry");
}

// Other keywords are silently ignored.  ENVIRONMENT has a reader of its own.
static void handle_statement(cfg_parser *parser, const char *keyword)
{
    if (vek_strcasecmp(keyword, "DATABASE") == 0 || vek_strcasecmp(keyword, "SHARED_DB") == 0 ||
        vek_strcasecmp(keyword, "PRIVATE_DB") == 0)
        handle_database(parser, keyword);
    else if (vek_strcasecmp(keyword, "DATABASE_ORDER") == 0)
        handle_database_order(parser);
    else if (vek_strcasecmp(keyword, "DEFAULT_WRITE_DB") == 0)
        handle_write_default(parser);
    else if (vek_strcasecmp(keyword, "TABLE") == 0)
        report_handler_result(parser, vek_tbl_read(vek_message_buf, parser->cfg_index),
                              "class or extension already defined.");
    else if (vek_strcasecmp(keyword, "PROPFILE") == 0)
        report_handler_result(parser, vek_propfile_read(vek_message_buf, parser->cfg_index),
                              "property file path does not exist.");
    else if (vek_strcasecmp(keyword, "TESTRIG") == 0)
        handle_testrig(parser);
}

// The line is in the shared message buffer, which every report overwrites.
static void handle_line(cfg_parser *parser, cfg_text *text)
{
    char keyword[VEK_PATH_SIZE];
    vek_message_buf[strcspn(vek_message_buf, "\n")] = '\0';
    vek_message_buf[strcspn(vek_message_buf, "!")] = '\0';
    const char *line = vek_message_buf;
    text_copy(keyword, text_next_word(&line));
    if (keyword[0] == '\0')
        return;
    if (strlen(vek_message_buf) == line_limit)
        reject_long_line(parser, text);
    else
        handle_statement(parser, keyword);
}

int vek_cfg_read(const char *path, int cfg_index)
{
    char copy[4096]; // a handler may overwrite the buffer that contains the path
    path = text_or_empty(path);
    if (text_copy(copy, path))
        path = copy; // a longer path does not open
    cfg_text text;
    if (!cfg_open(&text, path, caller))
        return 1;
    print_line("Reading configuration file '%s'", path);
    cfg_parser parser = {path, cfg_index, 0, 0};
    while (read_line(&text)) {
        ++parser.line;
        handle_line(&parser, &text);
    }
    if (!cfg_close(&text, path, caller) && parser.error == 0)
        parser.error = 1;
    if (parser.error != 0)
        report(REPORT_ERROR, caller, "Erroneous statement(s) ignored in file : '%s'.", path);
    return parser.error;
}
