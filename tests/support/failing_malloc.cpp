#include "failing_malloc.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <utility>

static int left; // allocations up to the one that fails; 0 if none is to fail
static bool failed, goes_on;

void fail_allocation(int nth, bool for_good)
{
    left = nth;
    goes_on = for_good;
}

bool has_failed()
{
    return failed;
}

bool stop_failing()
{
    left = 0;
    goes_on = false;
    return std::exchange(failed, false);
}

static bool fails_now()
{
    if (left > 0 && --left == 0)
        return failed = true;
    return failed && goes_on;
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
