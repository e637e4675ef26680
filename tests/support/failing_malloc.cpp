#include "failing_malloc.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <utility>

static int left; // allocations up to and including the one that fails; 0 if none fails
static bool failed, is_persistent;

void fail_allocation(int nth, bool persistent)
{
    left = nth;
    is_persistent = persistent;
}

bool stop_failing()
{
    left = 0;
    is_persistent = false;
    return std::exchange(failed, false);
}

static bool fails_now()
{
    if (left > 0 && --left == 0)
        return failed = true;
    return failed && is_persistent;
}

extern "C" {
FILE *__real_fdopen(int file, const char *mode);
void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void *__real_realloc(void *block, size_t size);

FILE *__wrap_fdopen(int file, const char *mode) // which allocates a stream
{
    if (!fails_now())
        return __real_fdopen(file, mode);
    errno = ENOMEM;
    return nullptr;
}
void *__wrap_malloc(size_t size)
{
    return fails_now() ? nullptr : __real_malloc(size);
}
void *__wrap_calloc(size_t count, size_t size)
{
    return fails_now() ? nullptr : __real_calloc(count, size);
}
void *__wrap_realloc(void *block, size_t size)
{
    return fails_now() ? nullptr : __real_realloc(block, size);
}
}
