#include "platform/platform.h"

#include <cerrno>

// A signal of the host's has interrupted the reading, which can go on.
static bool was_interrupted(FILE *file)
{
    if (ferror(file) == 0 || errno != EINTR)
        return false;
    clearerr(file);
    return true;
}

static int next_character(FILE *file)
{
    int character = getc(file);
    while (character == EOF && was_interrupted(file))
        character = getc(file);
    return character;
}

size_t platform_read(FILE *file, char *to, size_t size)
{
    size_t length = fread(to, 1, size, file);
    while (length < size && was_interrupted(file))
        length += fread(to + length, 1, size - length, file);
    return length;
}

bool platform_read_piece(FILE *file, char *to, size_t width)
{
    size_t length = 0;
    while (length + 1 < width && ferror(file) == 0) {
        int character = next_character(file);
        if (character == '\r') {
            int next = next_character(file);
            if (next == '\n' || next == EOF)
                character = next;
            else
                ungetc(next, file);
        }
        if (character == EOF)
            break;
        to[length++] = static_cast<char>(character);
        if (character == '\n')
            break;
    }
    to[length] = '\0';
    return length > 0 && ferror(file) == 0;
}
