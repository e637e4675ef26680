// Putting a text over that of a file that has to stay the same file.

#include "files/files.h"
#include "platform/durable.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstring>

// The path of the copy of the old text: beside the file, or, where nothing can be
// created there, in a directory of the system's.  Both are found again by who comes
// after a killed process.
static char kept_copy[4096];

static bool name_copy(const char *path, bool is_beside)
{
    if (!is_beside)
        return platform_lasting_copy_path(path, kept_copy, sizeof kept_copy);
    errno = ENAMETOOLONG;
    return text_join(kept_copy, {path, ".vek-previous"});
}

static bool copy_to(new_file *made, const char *path)
{
    FILE *source = platform_open_to_read(path);
    if (source == nullptr)
        return false;
    int error = copy_stream(source, made->stream);
    fclose(source);
    errno = error;
    return error == 0 && platform_sync_and_close(made);
}

static bool save_copy_at(const char *path, bool is_beside)
{
    new_file made;
    if (!name_copy(path, is_beside) ||
        !platform_create_in_dir_of(&made, kept_copy, NEW_FILE_PRIVATE, path, "wb"))
        return false;
    if (copy_to(&made, path) && platform_replace(&made, kept_copy)) {
        if (platform_sync_dir_of(kept_copy))
            return true;
        text_copy(made.path, kept_copy);
    }
    platform_discard(&made);
    return false;
}

static bool save_copy(const char *path)
{
    return save_copy_at(path, true) || (platform_must_overwrite() && save_copy_at(path, false));
}

// A copy that can't be removed, but has no text, keeps nobody from anything.
static void remove_copy()
{
    FILE *left =
        platform_remove_file(kept_copy) ? nullptr : platform_open_to_write(kept_copy, "r+b");
    if (left == nullptr)
        return;
    platform_truncate(left);
    fclose(left);
}

// At no moment is the file empty.
static bool put_text(FILE *file, const char *text, size_t length)
{
    return platform_rewind(file) && platform_write(file, text, length) && platform_truncate(file) &&
           platform_sync(file);
}

static bool restore(FILE *file)
{
    FILE *copy = platform_open_to_read(kept_copy);
    bool is_done = copy != nullptr && platform_rewind(file) && copy_stream(copy, file) == 0 &&
                   platform_truncate(file) && platform_sync(file);
    if (copy != nullptr)
        fclose(copy);
    return is_done;
}

// A file without text, or a device, has nothing to lose.
static bool overwrite_open(FILE *file, const char *path, const char *text, size_t length,
                           const char **left)
{
    file_state old;
    if (!platform_file_state(path, &old))
        return false;
    bool has_text = old.size > 0;
    if (has_text && !save_copy(path))
        return false;
    bool is_done = put_text(file, text, length);
    int reason = errno;
    if (has_text && (is_done || restore(file)))
        remove_copy();
    else if (has_text)
        *left = kept_copy;
    if (!has_text && !is_done && platform_rewind(file))
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
    fclose(file); // what has been synced is safe
    errno = reason;
    return is_done;
}

static bool has_same_text(const char *path, const char *other_path)
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

const char *overwrite_kept_copy(const char *path)
{
    for (bool is_beside : {true, false})
        if (name_copy(path, is_beside) && platform_is_own_copy(kept_copy, path))
            return kept_copy;
    return nullptr;
}

const char *overwrite_find_loss(const char *path)
{
    const char *copy = overwrite_kept_copy(path);
    if (copy == nullptr || !has_same_text(path, copy))
        return copy;
    remove_copy(); // of a process that was killed before it wrote
    return nullptr;
}
