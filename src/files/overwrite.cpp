// Putting a text over that of a file that has to stay the same file.

#include "files/files.h"
#include "platform/durable.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstdio>

// The copy of the old text while the new one is written, and afterwards if that
// could not be restored.
static char kept_copy[4096];

static bool has_text(const char *path)
{
    file_state state;
    return platform_file_state(path, &state) && state.size > 0;
}

// A copy beside the file has this name, so that who comes after a killed process
// finds it.
static bool name_copy(char (&copy)[4096], const char *path)
{
    if (text_join(copy, {path, ".vek-previous"}))
        return true;
    errno = ENAMETOOLONG;
    return false;
}

static bool copy_to(new_file *made, const char *path)
{
    FILE *source = platform_open_to_read(path);
    if (source == nullptr)
        return false;
    int error = copy_stream(source, made->stream);
    fclose(source);
    errno = error;
    return error == 0 && platform_finish(made);
}

static bool save_beside(const char *path)
{
    new_file made;
    if (!name_copy(kept_copy, path) ||
        !platform_create_beside(&made, path, NEW_FILE_PRIVATE, path, "wb"))
        return false;
    if (!copy_to(&made, path) || !platform_place(&made, kept_copy)) {
        platform_discard(&made);
        return false;
    }
    if (platform_sync_dir_of(kept_copy))
        return true;
    text_copy(made.path, kept_copy);
    platform_discard(&made);
    return false;
}

// Where nothing can be created beside the file.  The copy keeps the name that it
// has there.
static bool save_elsewhere(const char *path)
{
    char dir[256];
    new_file made;
    if (!platform_lasting_dir(dir, sizeof dir) ||
        !platform_create_beside(&made, dir, NEW_FILE_PRIVATE, path, "wb"))
        return false;
    if (copy_to(&made, path)) {
        text_copy(kept_copy, made.path);
        return true;
    }
    platform_discard(&made);
    return false;
}

static bool save_copy(const char *path)
{
    if (save_beside(path) || (platform_must_overwrite() && save_elsewhere(path)))
        return true;
    kept_copy[0] = '\0';
    return false;
}

// A copy that can't be removed, but has no text, keeps nobody from anything.
static void remove_copy()
{
    FILE *left =
        platform_remove_file(kept_copy) ? nullptr : platform_open_to_write(kept_copy, "wb");
    if (left != nullptr)
        fclose(left);
    kept_copy[0] = '\0';
}

// Between the emptying and the text there is nothing that takes time.
static bool put_text(FILE *file, const char *text, size_t length)
{
    return platform_empty(file) && platform_write(file, text, length) && platform_sync(file);
}

static bool restore(FILE *file)
{
    FILE *copy = platform_open_to_read(kept_copy);
    bool is_done = copy != nullptr && platform_empty(file) && copy_stream(copy, file) == 0 &&
                   platform_sync(file);
    if (copy != nullptr)
        fclose(copy);
    return is_done;
}

static bool overwrite_saved(FILE *file, const char *text, size_t length)
{
    bool is_done = put_text(file, text, length);
    int reason = errno;
    if (is_done || restore(file))
        remove_copy();
    errno = reason;
    return is_done;
}

// A file without text, or a device, has nothing to lose.
static bool overwrite_open(FILE *file, const char *path, const char *text, size_t length)
{
    if (has_text(path))
        return save_copy(path) && overwrite_saved(file, text, length);
    if (put_text(file, text, length))
        return true;
    int reason = errno;
    platform_empty(file);
    errno = reason;
    return false;
}

bool overwrite_file(const char *path, const char *mode, const char *text, size_t length)
{
    FILE *file = platform_open_to_write(path, mode);
    if (file == nullptr)
        return false;
    bool is_done = overwrite_open(file, path, text, length);
    int reason = errno;
    fclose(file); // what has been synced is safe
    errno = reason;
    return is_done;
}

const char *overwrite_kept_copy(const char *path)
{
    if (has_text(kept_copy) || (name_copy(kept_copy, path) && has_text(kept_copy)))
        return kept_copy;
    kept_copy[0] = '\0';
    return nullptr;
}
