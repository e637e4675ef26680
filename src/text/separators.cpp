#include "text/text.h"

#include <cstring>

// Replace a character up to the first newline.
static char *replace_char(char *text, char from, char to)
{
    text = text_or_empty(text);
    if (strchr(text, from) == nullptr)
        return text;
    for (char *pos = text; *pos != '\0' && *pos != '\n'; ++pos)
        if (*pos == from)
            *pos = to;
    return text;
}

char *vorn_vek_nt2unix_path(char *text)
{
    return replace_char(text, '\\', '/');
}

char *vorn_vek_runtime_path_port(char *text)
{
    return vorn_vek_nt2unix_path(text);
}

char *vorn_vek_unix2nt_path(char *text)
{
    return replace_char(text, '/', '\\');
}

// How many characters at the start are kept as they are.  The longer scheme is tried
// first: a file URL keeps all four separators of a network path.
static size_t scheme_length(const char *text)
{
    for (const char *scheme : {"klvds://", "file:////", "file://"})
        if (text_starts_with(text, scheme))
            return strlen(scheme);
    return 1;
}

// Whether a separator is followed by another one or by the end.
static bool is_extra(const char *separator)
{
    return separator[1] == '/' || separator[1] == '\0';
}

char *vek_rm_extra_separators(char *text)
{
    text = text_or_empty(text);
    if (text[0] == '\0')
        return text;
    char *to = strchr(text + scheme_length(text), '/');
    while (to != nullptr && !is_extra(to))
        to = strchr(to + 1, '/');
    if (to == nullptr)
        return text;
    for (const char *from = to; *from != '\0'; ++from)
        if (*from != '/' || !is_extra(from))
            *to++ = *from;
    *to = '\0';
    return text;
}
