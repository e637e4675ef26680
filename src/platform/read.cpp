// Reading that continues when a signal interrupts it.

#include "platform/platform.h"

#include <cerrno>

static bool was_interrupted(FILE *file)
{
    if (ferror(file) == 0 || errno != EINTR)
        return false;
    clearerr(file);
    return true;
}

size_t platform_read(FILE *file, char *to, size_t size)
{
    size_t length = fread(to, 1, size, file);
    while (length < size && was_interrupted(file))
        length += fread(to + length, 1, size - length, file);
    return length;
}
