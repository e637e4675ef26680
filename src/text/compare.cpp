#include "text/text.h"

#include <cctype>
#include <climits>
#include <cstring>

static int upper(char character)
{
    return toupper(static_cast<unsigned char>(character));
}

// ASCII letters have one upper case in every locale but for "i", which some pair
// with a letter that is not ASCII.  Where others have one, or control characters,
// is up to the locale.
static constexpr unsigned char fold(unsigned code)
{
    unsigned lower = code | 0x20;
    return code < 0x20 || code >= 0x80 || lower == 'i' ? 0 : static_cast<unsigned char>(lower);
}

struct fold_table {
    unsigned char of[256];
};

static constexpr fold_table make_fold_table()
{
    fold_table made = {};
    for (unsigned code = 0; code < 256; ++code)
        made.of[code] = fold(code);
    return made;
}

static unsigned folded(char character)
{
    static constexpr fold_table table = make_fold_table();
    return table.of[static_cast<unsigned char>(character)];
}

// Most that are compared are the same.
bool char_equal_nocase(char first, char second)
{
    return first == second || (folded(first) == folded(second) && upper(first) == upper(second));
}

int vek_strcasecmp(const char *first, const char *second)
{
    first = text_or_empty(first);
    second = text_or_empty(second);
    if (strcmp(first, second) == 0)
        return 0;
    while (*first != '\0' && char_equal_nocase(*first, *second)) {
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
        if (*first == '\0' || !char_equal_nocase(*first, *second))
            return upper(*first) - upper(*second);
    return 0;
}

// Names that differ do so in their lengths or towards their ends.
wchar_t text_hash_nocase(const char *text)
{
    size_t length = strlen(text);
    unsigned key = static_cast<unsigned>(length);
    for (const char *pos = text + (length > 8 ? length - 8 : 0); *pos != '\0'; ++pos)
        key = key * 31 + folded(*pos);
    return static_cast<wchar_t>(key);
}

char *vek_strrstr(const char *text, const char *part)
{
    text = text_or_empty(text);
    part = text_or_empty(part);
    size_t text_length = strlen(text);
    size_t part_length = strlen(part);
    if (part_length > text_length)
        return nullptr;
    for (const char *pos = text + (text_length - part_length);; --pos) {
        if (memcmp(pos, part, part_length) == 0)
            return const_cast<char *>(pos);
        if (pos == text)
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
