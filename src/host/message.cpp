#include "host/message.h"

#include "hsk.h"
#include "text/text.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

char vek_message_buf[VEK_PATH_SIZE];

static int setting(int id)
{
    return dbt_get_int(default_current_defaults(), id, 0);
}

static void set_setting(int id, int value)
{
    dbt_set_int(default_current_defaults(), id, value, 0);
}

// Print whatever the message settings are, and restore them.
static void print_forced(const char *line)
{
    int threshold = msg_get_gui_threshold();
    int first = setting(HSK_FIRST_SETTING);
    int second = setting(HSK_SECOND_SETTING);
    msg_set_gui_threshold(0);
    set_setting(HSK_FIRST_SETTING, HSK_SETTING_SHOWN);
    set_setting(HSK_SECOND_SETTING, HSK_SETTING_SHOWN);
    vc_str_print(line);
    msg_set_gui_threshold(threshold);
    set_setting(HSK_FIRST_SETTING, first);
    set_setting(HSK_SECOND_SETTING, second);
}

void vek_put_message(const char *text, const char *tag)
{
    text = text_or_empty(text);
    tag = text_or_empty(tag);
    size_t size = strlen(tag) + strlen(text) + 3;
    char *line = static_cast<char *>(malloc(size));
    if (line == nullptr)
        return;
    text_join(line, size, {tag, ": ", text});
    print_forced(line);
    free(line);
}

void vek_abort(const char *, const char *text)
{
    vek_put_message(text, "ABORT");
}

int vek_err(const char *, const char *text)
{
    vek_put_message(text, "ERROR");
    return 0;
}

int vek_warn(const char *, const char *text)
{
    vek_put_message(text, "WARNING");
    return 0;
}

static void dispatch(report_kind kind, const char *caller, const char *text)
{
    switch (kind) {
    case REPORT_ERROR:
        vek_err(caller, text);
        break;
    case REPORT_WARNING:
        vek_warn(caller, text);
        break;
    case REPORT_ABORT:
        vek_abort(caller, text);
        break;
    }
}

// Null if there is no memory for it.  The caller frees the string.
static char *format_on_heap(int length, const char *format, va_list arguments)
{
    size_t size = static_cast<size_t>(length) + 1;
    char *text = static_cast<char *>(malloc(size));
    if (text != nullptr)
        vsnprintf(text, size, format, arguments);
    return text;
}

// Format in `buffer`, truncated to its size.  Returns the whole string on the heap, which
// the caller frees, if it does not fit; null if it fits or there is no memory.
// Everything is formatted before the buffer changes, because the arguments may point
// into it.
static char *format_in(char *buffer, size_t size, const char *format, va_list arguments)
{
    char start[1024] = "";
    va_list again;
    va_copy(again, arguments);
    int length = vsnprintf(start, sizeof start, format, arguments);
    char *whole = nullptr;
    if (length >= static_cast<int>(size))
        whole = format_on_heap(length, format, again);
    va_end(again);
    text_truncate(buffer, size, start);
    return whole;
}

static void report_arguments(char *buffer, size_t size, report_kind kind, const char *caller,
                             const char *format, va_list arguments)
{
    char *whole = format_in(buffer, size, format, arguments);
    dispatch(kind, caller, whole != nullptr ? whole : buffer);
    free(whole);
}

static void print_arguments(char *buffer, size_t size, const char *format, va_list arguments)
{
    char *whole = format_in(buffer, size, format, arguments);
    vc_str_print(whole != nullptr ? whole : buffer);
    free(whole);
}

void report(report_kind kind, const char *caller, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    report_arguments(vek_message_buf, sizeof vek_message_buf, kind, caller, format, arguments);
    va_end(arguments);
}

void report_in(char *buffer, size_t size, report_kind kind, const char *caller, const char *format,
               ...)
{
    va_list arguments;
    va_start(arguments, format);
    report_arguments(buffer, size, kind, caller, format, arguments);
    va_end(arguments);
}

void print_line(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    print_arguments(vek_message_buf, sizeof vek_message_buf, format, arguments);
    va_end(arguments);
}

void print_line_in(char *buffer, size_t size, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    print_arguments(buffer, size, format, arguments);
    va_end(arguments);
}

void report_malloc_failure(const char *caller)
{
    vek_abort(caller, "malloc_failure");
}
