// Reading the private file's old text, byte by byte.

#include "config/private_file.h"

static bool is_at_line_feed(FILE *file)
{
    int next = getc(file);
    ungetc(next, file);
    return next == '\n';
}

// A carriage return directly before the line feed does not count, so that lines
// come in the same pieces wherever the file was written.
bool take_line(private_line *line, FILE *file, size_t limit)
{
    size_t counted = 0;
    line->length = 0;
    int character = 0;
    while (counted < limit && character != '\n' && (character = getc(file)) != EOF) {
        line->text[line->length++] = static_cast<char>(character);
        if (character != '\r' || !is_at_line_feed(file))
            ++counted;
    }
    line->text[line->length] = '\0';
    return line->length > 0;
}

const char *end_of(const private_line *line, const char *usual)
{
    if (line->text[line->length - 1] != '\n')
        return usual;
    return line->length > 1 && line->text[line->length - 2] == '\r' ? "\r\n" : "\n";
}
