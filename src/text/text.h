// Bounded text: the only way in which this library copies, joins and splits.
//
//   instead of              use
//   strcpy, strncpy         text_copy; text_cut where a prefix is wanted
//   strcat, sprintf("%s")   text_join, text_append
//   sprintf of numbers      snprintf
//   strtok                  text_take_word, text_take_between
//   sscanf                  text_take_word, text_take_rest
//   atoi                    strtol, which tells where a number ends
//   strncmp with a literal  text_begins
//
// The compiler refuses all on the left but strncmp (platform/banned.h).
//
// A target is always terminated.  A text that does not fit leaves the empty
// text and gives false: a cut path could name another file.

#pragma once

#include "vek.h"

#include <cstddef>
#include <initializer_list>

// What an operation with nothing to give returns.  Nothing writes to it.
extern char vek_empty_text[1];

const char *text_or_empty(const char *text); // null becomes the empty text
char *text_or_empty(char *text);
bool text_is_empty(const char *text); // null counts as empty

bool text_begins(const char *text, const char *start);

// Characters of a text; not terminated.
struct text_span {
    const char *start;
    size_t length;
};

// Whether two characters are one without regard to case.
bool text_same_letter(char first, char second);

// Whether the characters are this word, without regard to case.
bool text_is(text_span text, const char *word);

// A number by which a text is looked for among many.  Texts that are equal without
// regard to case have the same, whatever the locale; others seldom have.
wchar_t text_key(const char *text);

// Each takes the next piece from *text and moves *text behind it.  A piece of
// length 0 says that there is none.
text_span text_take_word(const char **text);                    // between white space
text_span text_take_between(const char **text, char separator); // empty pieces are skipped
text_span text_take_rest(const char **text); // from the next word to the line's end

bool text_copy(char *to, size_t width, const char *from); // `from` may lie in `to`
bool text_copy(char *to, size_t width, text_span from);
bool text_join(char *to, size_t width, std::initializer_list<const char *> parts);
bool text_append(char *to, size_t width, const char *more);
void text_cut(char *to, size_t width, const char *from); // as much as fits

template <size_t width> bool text_copy(char (&to)[width], const char *from)
{
    return text_copy(to, width, from);
}

template <size_t width> bool text_copy(char (&to)[width], text_span from)
{
    return text_copy(to, width, from);
}

template <size_t width> bool text_join(char (&to)[width], std::initializer_list<const char *> parts)
{
    return text_join(to, width, parts);
}

template <size_t width> bool text_append(char (&to)[width], const char *more)
{
    return text_append(to, width, more);
}
