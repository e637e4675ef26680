#include "text/text.h"

#include <cctype>
#include <climits>
#include <cstring>

static int upper(char character)
{
    return toupper(static_cast<unsigned char>(character));
}

int vek_strcasecmp(const char *first, const char *second)
{
    first = text_or_empty(first);
    second = text_or_empty(second);
    while (*first != '\0' && upper(*first) == upper(*second)) {
        ++first;
        ++second;
    }
    return upper(*first) - upper(*second);
}

int vek_strncasecmp(const char *first, const char *second, int count)
{
    first = text_or_empty(first);
    second = text_or_empty(second);
    for (; count > 0; --count, ++first, ++second)
        if (*first == '\0' || upper(*first) != upper(*second))
            return upper(*first) - upper(*second);
    return 0;
}

char *vek_strrstr(const char *text, const char *part)
{
    text = text_or_empty(text);
    part = text_or_empty(part);
    size_t text_length = strlen(text);
    size_t part_length = strlen(part);
    if (part_length > text_length)
        return nullptr;
    for (const char *place = text + (text_length - part_length);; --place) {
        if (memcmp(place, part, part_length) == 0)
            return const_cast<char *>(place);
        if (place == text)
            return nullptr;
    }
}

void vek_str_copy_to_upper_case(const char *text, char *upper)
{
    if (upper == nullptr)
        return;
    for (text = text_or_empty(text); *text != '\0'; ++text) {
        bool is_lower = *text >= 'a' && *text <= 'z';
        *upper++ = is_lower ? static_cast<char>(*text - 'a' + 'A') : *text;
    }
    *upper = '\0';
}
