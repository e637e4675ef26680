#include "config/line_reader.h"
#include "platform/platform.h"

static bool is_at_line_end(FILE *file)
{
    int next = platform_getc(file);
    ungetc(next, file);
    return next == '\n' || next == EOF;
}

size_t read_line_chunk(FILE *file, char *to, size_t limit, line_form form)
{
    size_t length = 0, counted = 0;
    int character = 0;
    while (counted < limit && character != '\n' && (character = platform_getc(file)) != EOF) {
        bool ends_line = character == '\r' && is_at_line_end(file);
        if (!ends_line)
            ++counted;
        if (!ends_line || form == LINE_BYTES)
            to[length++] = static_cast<char>(character);
    }
    to[length] = '\0';
    return ferror(file) == 0 ? length : 0;
}
