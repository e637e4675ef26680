// Bounded strings: the only functions with which this library copies, joins and
// splits them.
//
//   instead of              use
//   strcpy, strncpy         text_copy; text_truncate where a prefix is wanted
//   strcat, sprintf("%s")   text_join, text_append
//   sprintf of numbers      snprintf
//   strtok                  text_next_word, text_next_token
//   sscanf                  text_next_word, text_rest_of_line
//   atoi                    strtol, which returns where a number ends
//   strncmp with a literal  text_starts_with
//
// The compiler rejects all on the left but strncmp (platform/banned.h).
//
// A target is always terminated.  If a string does not fit, the target becomes the
// empty string and the function returns false: a truncated path could name another
// file.

#pragma once

#include "vek.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>

// The empty string that operations return if they have no result.  Never written to.
extern char vek_empty_text[1];

const char *text_or_empty(const char *text); // null becomes the empty string
char *text_or_empty(char *text);
bool text_is_empty(const char *text); // null counts as empty

bool text_starts_with(const char *text, const char *start);

// Part of a string; not terminated.
struct text_span {
    const char *start;
    size_t length;
};

// Whether two characters are equal without regard to case.
bool char_equal_nocase(char first, char second);

// Whether the span is equal to a word without regard to case.
bool text_equals_nocase(text_span text, const char *word);

// A hash that strings have in common if they are equal without regard to case,
// whatever the locale.
uint32_t text_hash_nocase(const char *text);

// Each returns the next token of *text and moves *text to the character after it.
// The length is 0 if there is none.
text_span text_next_word(const char **text);                  // between white space
text_span text_next_token(const char **text, char separator); // empty tokens are skipped
text_span text_rest_of_line(const char **text);               // from the next word to the newline

bool text_copy(char *to, size_t size, const char *from); // `from` may be in `to`
bool text_copy(char *to, size_t size, text_span from);
bool text_join(char *to, size_t size, std::initializer_list<const char *> parts);
bool text_append(char *to, size_t size, const char *more);
void text_truncate(char *to, size_t size, const char *from); // copies as much as fits

template <size_t size> bool text_copy(char (&to)[size], const char *from)
{
    return text_copy(to, size, from);
}

template <size_t size> bool text_copy(char (&to)[size], text_span from)
{
    return text_copy(to, size, from);
}

template <size_t size> bool text_join(char (&to)[size], std::initializer_list<const char *> parts)
{
    return text_join(to, size, parts);
}

template <size_t size> bool text_append(char (&to)[size], const char *more)
{
    return text_append(to, size, more);
}
