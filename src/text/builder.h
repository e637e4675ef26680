// A buffer that grows as it is appended to.

#pragma once

#include <cstddef>

#ifdef __GNUC__
#define BUILDER_FORMAT(pos, first) __attribute__((format(printf, pos, first)))
#else
#define BUILDER_FORMAT(pos, first)
#endif

// Initialized with {}.  `bytes` is not terminated.  Once memory has run out (ENOMEM),
// `is_truncated` is true: bytes are missing, and the capacity no longer grows.
struct text_builder {
    char *bytes;
    size_t length;
    size_t capacity;
    bool is_truncated;
};

void builder_append(text_builder *text, const char *bytes, size_t length);
void builder_print(text_builder *text, const char *format, ...) BUILDER_FORMAT(2, 3);
void builder_release(text_builder *text);
