// Overwriting a file in place, where it can't be replaced by another.

#include "files/files.h"
#include "platform/durable.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstring>

// The path of the safety copy of the old contents: in the directory of the file, or, if
// nothing can be created there, in a directory of the system.  After a process was
// killed, the next one finds the copy in either.
static char safety_copy[4096];

static bool set_copy_path(const char *path, bool in_same_dir)
{
    if (!in_same_dir)
        return platform_lasting_copy_path(path, safety_copy, sizeof safety_copy);
    errno = ENAMETOOLONG;
    return text_join(safety_copy, {path, ".vek-previous"});
}

static bool copy_and_sync_from(new_file *created, const char *path)
{
    FILE *source = platform_open_to_read(path);
    if (source == nullptr)
        return false;
    int error = copy_stream(source, created->stream);
    fclose(source);
    errno = error;
    return error == 0 && platform_sync_and_close(created);
}

static bool save_copy_at(const char *path, bool in_same_dir)
{
    new_file created;
    if (!set_copy_path(path, in_same_dir) ||
        !platform_create_in_dir_of(&created, safety_copy, NEW_FILE_PRIVATE, path, "wb"))
        return false;
    if (copy_and_sync_from(&created, path) && platform_replace(&created, safety_copy)) {
        if (platform_sync_dir_of(safety_copy))
            return true;
        text_copy(created.path, safety_copy);
    }
    platform_discard(&created);
    return false;
}

static bool save_copy(const char *path)
{
    return save_copy_at(path, true) || (platform_must_overwrite() && save_copy_at(path, false));
}

// An empty copy counts as none, so one that can't be removed is truncated.
static void remove_copy()
{
    FILE *left =
        platform_remove_file(safety_copy) ? nullptr : platform_open_to_write(safety_copy, "r+b");
    if (left == nullptr)
        return;
    platform_truncate(left);
    fclose(left);
}

// The file is never empty: it is truncated after the write.
static bool write_contents(FILE *file, const char *text, size_t length)
{
    return platform_rewind(file) && platform_write(file, text, length) && platform_truncate(file) &&
           platform_sync(file);
}

static bool restore_copy(FILE *file)
{
    FILE *copy = platform_open_to_read(safety_copy);
    bool is_done = copy != nullptr && platform_rewind(file) && copy_stream(copy, file) == 0 &&
                   platform_truncate(file) && platform_sync(file);
    if (copy != nullptr)
        fclose(copy);
    return is_done;
}

// An empty file or a device needs no safety copy.
static bool overwrite_open(FILE *file, const char *path, const char *text, size_t length,
                           const char **left)
{
    file_state old;
    if (!platform_file_state(path, &old))
        return false;
    bool has_contents = old.size > 0;
    if (has_contents && !save_copy(path))
        return false;
    bool is_done = write_contents(file, text, length);
    int reason = errno;
    if (has_contents && (is_done || restore_copy(file)))
        remove_copy();
    else if (has_contents)
        *left = safety_copy;
    if (!has_contents && !is_done && platform_rewind(file))
        platform_truncate(file);
    errno = reason;
    return is_done;
}

bool overwrite_file(const char *path, const char *mode, const char *text, size_t length,
                    const char **left)
{
    *left = nullptr;
    FILE *file = platform_open_to_write(path, mode);
    if (file == nullptr)
        return false;
    bool is_done = overwrite_open(file, path, text, length, left);
    int reason = errno;
    fclose(file); // the contents are synced already
    errno = reason;
    return is_done;
}

static bool has_same_contents(const char *path, const char *other_path)
{
    static char blocks[2][4096];
    FILE *file = platform_open_to_read(path), *other = platform_open_to_read(other_path);
    bool is_same = file != nullptr && other != nullptr;
    for (size_t length = sizeof blocks[0]; is_same && length == sizeof blocks[0];) {
        length = platform_read(file, blocks[0], sizeof blocks[0]);
        is_same = platform_read(other, blocks[1], sizeof blocks[1]) == length &&
                  ferror(file) == 0 && ferror(other) == 0 &&
                  memcmp(blocks[0], blocks[1], length) == 0;
    }
    for (FILE *open : {file, other})
        if (open != nullptr)
            fclose(open);
    return is_same;
}

const char *find_safety_copy(const char *path)
{
    for (bool in_same_dir : {true, false})
        if (set_copy_path(path, in_same_dir) && platform_is_own_copy(safety_copy, path))
            return safety_copy;
    return nullptr;
}

const char *find_needed_safety_copy(const char *path)
{
    const char *copy = find_safety_copy(path);
    if (copy == nullptr || !has_same_contents(path, copy))
        return copy;
    remove_copy(); // left by a process that was killed before it wrote
    return nullptr;
}
