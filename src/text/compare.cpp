#include "text/text.h"

#include <cctype>
#include <climits>
#include <cstring>

static int upper(char character)
{
    return toupper(static_cast<unsigned char>(character));
}

// Characters that are equal without regard to case in some locale fold to the same
// value.  ASCII letters have the same upper case in every locale except for "i", which
// some locales pair with a letter that is not ASCII.  The upper case of other
// characters, and of control characters, depends on the locale: all these become 0.
static constexpr unsigned char fold(unsigned code)
{
    unsigned lower = code | 0x20;
    return code < 0x20 || code >= 0x80 || lower == 'i' ? 0 : static_cast<unsigned char>(lower);
}

struct fold_table {
    unsigned char folded[256];
};

static constexpr fold_table make_fold_table()
{
    fold_table table = {};
    for (unsigned code = 0; code < 256; ++code)
        table.folded[code] = fold(code);
    return table;
}

static uint32_t folded(char character)
{
    static constexpr fold_table table = make_fold_table();
    return table.folded[static_cast<unsigned char>(character)];
}

// Most compared characters are the same.
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

// One step of the FNV-1a hash.
static uint32_t hash_step(uint32_t hash, char character)
{
    return (hash ^ folded(character)) * 16777619;
}

// Names differ in their lengths or near their ends, so only the length and the last
// characters are hashed.  The compiler unrolls a loop of constant length.
uint32_t text_hash_nocase(const char *text)
{
    constexpr size_t hashed_length = 8;
    size_t length = strlen(text);
    uint32_t hash = static_cast<uint32_t>(length);
    if (length < hashed_length) {
        for (; *text != '\0'; ++text)
            hash = hash_step(hash, *text);
        return hash;
    }
    const char *last = text + length - hashed_length;
    for (size_t i = 0; i < hashed_length; ++i)
        hash = hash_step(hash, last[i]);
    return hash;
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
