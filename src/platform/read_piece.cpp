#include "platform/platform.h"

bool platform_read_piece(FILE *file, char *to, size_t width)
{
    size_t length = 0;
    while (length + 1 < width) {
        int character = getc(file);
        if (character == '\r') {
            int next = getc(file);
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
    return length > 0;
}
