#include "text/builder.h"

#include "memory/array.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// Ensure that `more` bytes and a NUL fit.
static bool reserve_bytes(text_builder *text, size_t more)
{
    size_t needed = text->length + more + 1;
    if (needed <= text->capacity)
        return true;
    size_t capacity = needed < 4096 ? 8192 : needed + needed / 2;
    if (text->is_truncated || !array_resize(&text->bytes, capacity)) {
        text->is_truncated = true;
        return false;
    }
    text->capacity = capacity;
    return true;
}

void builder_append(text_builder *text, const char *bytes, size_t length)
{
    if (length == 0 || !reserve_bytes(text, length))
        return;
    memcpy(text->bytes + text->length, bytes, length);
    text->length += length;
}

void builder_print(text_builder *text, const char *format, ...)
{
    va_list arguments, again;
    va_start(arguments, format);
    va_copy(again, arguments);
    int length = vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    if (length > 0 && reserve_bytes(text, static_cast<size_t>(length))) {
        vsnprintf(text->bytes + text->length, static_cast<size_t>(length) + 1, format, again);
        text->length += static_cast<size_t>(length);
    }
    va_end(again);
}

void builder_release(text_builder *text)
{
    free(text->bytes);
    *text = {};
}
