#include "support/sandbox.h"

#include "support/harness.h"

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_set>

bool sandbox_active;

// ---- Memory ----

static std::unordered_set<void *> blocks;
static int allocations_left; // including the one that fails; 0: none fails

void fail_allocation(int nth)
{
    allocations_left = nth;
}

static bool fails_now()
{
    return sandbox_active && allocations_left > 0 && --allocations_left == 0;
}

static void *record(void *block)
{
    if (sandbox_active && block != nullptr)
        blocks.insert(block);
    return block;
}

extern "C" {
void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void *__real_realloc(void *block, size_t size);
void __real_free(void *block);

void *__wrap_malloc(size_t size)
{
    return fails_now() ? nullptr : record(__real_malloc(size));
}
void *__wrap_calloc(size_t count, size_t size)
{
    return fails_now() ? nullptr : record(__real_calloc(count, size));
}
void *__wrap_realloc(void *block, size_t size)
{
    if (fails_now())
        return nullptr;
    blocks.erase(block);
    return record(__real_realloc(block, size));
}
void __wrap_free(void *block)
{
    blocks.erase(block);
    __real_free(block);
}
}

void sandbox_release_all()
{
    for (void *block : blocks)
        __real_free(block);
    blocks.clear();
}

// ---- Files ----

// Sets errno to EACCES while the sandbox is active.
static bool is_outside(const char *path)
{
    if (!sandbox_active)
        return false;
    std::error_code failed;
    std::filesystem::path absolute = std::filesystem::absolute(path, failed).lexically_normal();
    bool is_inside = !failed && (absolute.native() + "/").starts_with(home + "/");
    errno = EACCES;
    return !is_inside;
}

extern "C" {
int __real_open(const char *path, int flags, ...);
int __real_mkdir(const char *path, mode_t mode);
int __real_unlink(const char *path);
int __real_remove(const char *path);
int __real_rename(const char *from, const char *to);
int __real_link(const char *from, const char *to);
int __real_renameat2(int from_dir, const char *from, int to_dir, const char *to, unsigned flags);
char *__real_mkdtemp(char *path);

int __wrap_open(const char *path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return is_outside(path) ? -1 : __real_open(path, flags, mode);
}
int __wrap_mkdir(const char *path, mode_t mode)
{
    return is_outside(path) ? -1 : __real_mkdir(path, mode);
}
int __wrap_unlink(const char *path)
{
    return is_outside(path) ? -1 : __real_unlink(path);
}
int __wrap_remove(const char *path)
{
    return is_outside(path) ? -1 : __real_remove(path);
}
int __wrap_rename(const char *from, const char *to)
{
    return is_outside(from) || is_outside(to) ? -1 : __real_rename(from, to);
}
int __wrap_renameat2(int from_dir, const char *from, int to_dir, const char *to, unsigned flags)
{
    if (is_outside(from) || is_outside(to))
        return -1;
    return __real_renameat2(from_dir, from, to_dir, to, flags);
}
int __wrap_link(const char *from, const char *to)
{
    return is_outside(from) || is_outside(to) ? -1 : __real_link(from, to);
}
char *__wrap_mkdtemp(char *path)
{
    return is_outside(path) ? nullptr : __real_mkdtemp(path);
}
}
