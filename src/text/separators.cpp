#include "text/text.h"

#include <cstring>

static char *turn(char *text, char from, char to)
{
    text = text_or_empty(text);
    if (strchr(text, from) == nullptr)
        return text;
    for (char *place = text; *place != '\0' && *place != '\n'; ++place)
        if (*place == from)
            *place = to;
    return text;
}

char *vorn_vek_nt2unix_path(char *text)
{
    return turn(text, '\\', '/');
}

char *vorn_vek_runtime_path_port(char *text)
{
    return vorn_vek_nt2unix_path(text);
}

char *vorn_vek_unix2nt_path(char *text)
{
    return turn(text, '/', '\\');
}

// How many characters at the start stay as they are.  The longer scheme comes
// first: a file URL keeps all four separators of a network path.
static size_t protected_length(const char *text)
{
    for (const char *scheme : {"klvds://", "file:////", "file://"})
        if (text_begins(text, scheme))
            return strlen(scheme);
    return 1;
}

char *vek_rm_extra_separators(char *text)
{
    text = text_or_empty(text);
    if (text[0] == '\0')
        return text;
    char *to = text + protected_length(text);
    for (const char *from = to; *from != '\0'; ++from) {
        bool is_extra = *from == '/' && (from[1] == '/' || from[1] == '\0');
        if (!is_extra)
            *to++ = *from;
    }
    *to = '\0';
    return text;
}
