#include "text/text.h"

#include <cctype>
#include <cstring>

char vek_empty_text[1];

const char *text_or_empty(const char *text)
{
    return text == nullptr ? vek_empty_text : text;
}

char *text_or_empty(char *text)
{
    return text == nullptr ? vek_empty_text : text;
}

bool text_is_empty(const char *text)
{
    return text == nullptr || *text == '\0';
}

bool text_starts_with(const char *text, const char *start)
{
    for (; *start != '\0'; ++text, ++start)
        if (*text != *start)
            return false;
    return true;
}

bool text_equals_nocase(text_span text, const char *word)
{
    return text.length == strlen(word) &&
           vek_strncasecmp(text.start, word, static_cast<int>(text.length)) == 0;
}

static bool is_space(char character)
{
    return isspace(static_cast<unsigned char>(character)) != 0;
}

static void skip_space(const char **text)
{
    while (is_space(**text))
        ++*text;
}

text_span text_next_word(const char **text)
{
    skip_space(text);
    text_span word = {*text, 0};
    while (**text != '\0' && !is_space(**text))
        ++*text;
    word.length = static_cast<size_t>(*text - word.start);
    return word;
}

text_span text_next_token(const char **text, char separator)
{
    while (**text == separator)
        ++*text;
    text_span token = {*text, 0};
    while (**text != '\0' && **text != separator)
        ++*text;
    token.length = static_cast<size_t>(*text - token.start);
    return token;
}

text_span text_rest_of_line(const char **text)
{
    skip_space(text);
    text_span rest = {*text, strcspn(*text, "\n")};
    *text += rest.length;
    return rest;
}

bool text_copy(char *to, size_t size, const char *from)
{
    return text_copy(to, size, text_span{from, strlen(from)});
}

bool text_copy(char *to, size_t size, text_span from)
{
    bool fits = from.length < size;
    if (fits)
        memmove(to, from.start, from.length);
    to[fits ? from.length : 0] = '\0';
    return fits;
}

bool text_join(char *to, size_t size, std::initializer_list<const char *> parts)
{
    size_t length = 0;
    for (const char *part : parts) {
        size_t more = strlen(part);
        if (more >= size - length) {
            to[0] = '\0';
            return false;
        }
        memcpy(to + length, part, more);
        length += more;
    }
    to[length] = '\0';
    return true;
}

bool text_append(char *to, size_t size, const char *more)
{
    size_t length = strlen(to);
    if (text_copy(to + length, size - length, more))
        return true;
    to[0] = '\0';
    return false;
}

void text_truncate(char *to, size_t size, const char *from)
{
    size_t length = strnlen(from, size - 1);
    memcpy(to, from, length);
    to[length] = '\0';
}
