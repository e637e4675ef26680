// Executing the ENVIRONMENT statements of one configuration file.

#include "config/cfg_text.h"
#include "host/message.h"
#include "hsk.h"
#include "text/text.h"

#include <cstring>

constexpr size_t chunk_limit = 255;
constexpr size_t longest_name = 60;
constexpr size_t longest_value = 180; // before it is expanded

static const char caller[] = "_cfg_read_file_env";

struct env_statement {
    text_span keyword;
    text_span name;
    text_span value;
};

static env_statement parse_environment(const char *line)
{
    env_statement statement;
    statement.keyword = text_next_word(&line);
    statement.name = text_next_word(&line);
    statement.value = text_rest_of_line(&line);
    return statement;
}

static void report_limit(const char *path, int line, const char *what, size_t limit)
{
    report(REPORT_ERROR, caller,
           "Syntax error in line %d of cfg_file '%s':\n       environment variable %s > %d "
           "characters.",
           line, path, what, static_cast<int>(limit));
}

// False after a report.
static bool is_well_formed(const env_statement &statement, const char *path, int line)
{
    if (statement.value.length == 0)
        report(REPORT_ERROR, caller,
               "Syntax error in line %d of cfg_file '%s':\n       missing arguments for "
               "ENVIRONMENT entry.",
               line, path);
    else if (statement.name.length > longest_name)
        report_limit(path, line, "name", longest_name);
    else if (statement.value.length > longest_value)
        report_limit(path, line, "value", longest_value);
    else
        return true;
    vek_err(caller, "Statement ignored.  Continuing read of file...");
    return false;
}

// Remove quotes around the value, then trailing spaces.  Quotes that a space follows are
// kept.
static void clean_value(char *value)
{
    size_t length = strlen(value);
    if (length > 0 && value[0] == '"' && value[length - 1] == '"') {
        value[length - 1] = '\0';
        text_copy(value, VEK_PATH_SIZE, length > 1 ? value + 1 : "");
    }
    for (length = strlen(value); length > 0 && value[length - 1] == ' '; --length)
        value[length - 1] = '\0';
}

// Returns the result of vc_putenv.
static int set_variable(const env_statement &statement)
{
    char name[longest_name + 1];
    char value[VEK_PATH_SIZE];
    text_copy(name, statement.name);
    text_copy(value, statement.value);
    clean_value(vek_eval_str(value));
    return vc_putenv(name, value);
}

static int _cfg_read_file_env(char *path)
{
    path = vek_eval_str(path);
    cfg_text text;
    if (!cfg_open(&text, path, caller))
        return 1;
    int result = 0;
    for (int line = 1; read_line_chunk(&text, vek_message_buf, chunk_limit, LINE_TEXT) > 0;
         ++line) {
        vek_message_buf[strcspn(vek_message_buf, "!")] = '\0';
        env_statement statement = parse_environment(vek_message_buf);
        if (text_equals_nocase(statement.keyword, "environment") &&
            is_well_formed(statement, path, line))
            result = set_variable(statement);
    }
    return cfg_close(&text, path, caller) ? result : 1;
}

int vek_env_read(char *path)
{
    if (vek_solver_mode() != 0)
        print_line("  Processing ENVIRONMENT entries in '%s'", text_or_empty(path));
    return _cfg_read_file_env(path);
}
