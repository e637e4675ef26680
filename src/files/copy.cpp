// Copying and appending files.

#include "files/files.h"
#include "host/message.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstring>

bool vek_file_verbose = true;

void file_path_init(file_path *path, char *given)
{
    path->given = text_or_empty(given);
    path->is_too_long = !text_copy(path->text, path->given);
}

bool file_path_is_usable(const file_path *path)
{
    if (path->is_too_long)
        errno = ENAMETOOLONG;
    return !path->is_too_long;
}

const char *display_name(file_path *path, char (&alias)[VEK_PATH_SIZE])
{
    text_copy(alias, vorn_vek_path2alias(path->text));
    vorn_vek_nt2unix_path(path->given);
    return alias[0] == '\0' ? path->given : alias;
}

int copy_stream(FILE *source, FILE *target)
{
    static char block[32768];
    setvbuf(source, nullptr, _IONBF, 0);
    int error = 0;
    size_t length = sizeof block;
    while (length == sizeof block && error == 0) {
        length = platform_read(source, block, sizeof block);
        if (length < sizeof block && ferror(source) != 0)
            error = errno;
        if (!platform_write(target, block, length))
            error = errno;
    }
    return error;
}

// Closes both files.  After an error the target keeps what was written.
static int copy_and_close(FILE *source, FILE *target)
{
    int error = copy_stream(source, target);
    fclose(source);
    if (fclose(target) != 0 && error == 0 && errno != EINTR)
        error = errno;
    return error;
}

// Gets the system's error message first: finding the alias may change errno.
int report_copy_failure(const char *what, file_path *path)
{
    char alias[VEK_PATH_SIZE];
    const char *reason = strerror(errno);
    const char *name = display_name(path, alias);
    report(REPORT_ERROR, "vorn_vek_copy_file2file", "%s '%s' : %s", what, name, reason);
    return 1;
}

int report_same_file(file_path *target)
{
    char alias[VEK_PATH_SIZE];
    report(REPORT_ERROR, "vorn_vek_copy_file2file", "Old filename '%s' is same as new filename.",
           display_name(target, alias));
    return 1;
}

static FILE *open_target(const file_path *target)
{
    if (strlen(target->given) < VEK_PATH_SIZE)
        return platform_open_to_write(target->text, "wb");
    errno = ENAMETOOLONG;
    return nullptr;
}

void print_copied(file_path *source, file_path *target)
{
    char alias[VEK_PATH_SIZE];
    print_line("File '%s' successfully copied to", display_name(source, alias));
    print_line("     '%s'.", display_name(target, alias));
}

// *error becomes the errno value of a read or write error, or 0.
static int copy_file(char *source, char *target, int *error)
{
    file_path from, to;
    *error = 0;
    file_path_init(&from, source);
    file_path_init(&to, target);
    if (vek_strcasecmp(from.given, to.given) == 0 || platform_same_file(from.text, to.text))
        return report_same_file(&to);
    FILE *in = file_path_is_usable(&from) ? platform_open_to_read(from.text) : nullptr;
    if (in == nullptr)
        return report_copy_failure("Could not open file", &from);
    FILE *out = open_target(&to);
    if (out == nullptr) {
        int result = report_copy_failure("Cannot create file", &to);
        fclose(in);
        return result;
    }
    *error = copy_and_close(in, out);
    if (vek_file_verbose && vek_file_exists(to.text) != 0)
        print_copied(&from, &to);
    return 0;
}

// Read and write errors are ignored: hosts rely on this result.
int vorn_vek_copy_file2file(char *source, char *target)
{
    int error;
    return copy_file(source, target, &error);
}

int vorn_vek_copy_file2file_silent(char *source, char *target)
{
    vek_file_verbose = false;
    int result = vorn_vek_copy_file2file(source, target);
    vek_file_verbose = true;
    return result;
}

// The paths are copied: displaying a file by its name converts "\" to "/" in them.
int copy_file_silently(const char *source, const char *target, int *error)
{
    char from[VEK_PATH_SIZE];
    char to[VEK_PATH_SIZE];
    text_copy(from, source);
    text_copy(to, target);
    vek_file_verbose = false;
    int result = copy_file(from, to, error);
    vek_file_verbose = true;
    return result;
}

int vorn_vek_copy_file2db(char *source, const char *database)
{
    int level = vorn_vek_db2level(database);
    if (level == -1) {
        report(REPORT_ERROR, "vorn_vek_copy_file2db",
               "Invalid database alias '%s', file not copied.", text_or_empty(database));
        return 1;
    }
    file_path from;
    file_path_init(&from, vorn_vek_nt2unix_path(source));
    const char *base = vorn_vek_input2base(from.text);
    const char *ext = vorn_vek_input2ext(from.text);
    bool may_be_known = strlen(ext) < VEK_EXT_SIZE; // including a version
    const char *directory = may_be_known ? vorn_vek_ext2path(ext, level) : vek_empty_text;
    char target[VEK_TBL_PATH_SIZE + 2 * VEK_PATH_SIZE]; // the copy rejects what is too long
    text_join(target, {directory, "/", base, ".", ext});
    return vorn_vek_copy_file2file(from.is_too_long ? from.given : from.text, target);
}

int vorn_vek_append_file2file(const char *source, const char *target)
{
    source = text_or_empty(source);
    target = text_or_empty(target);
    if (platform_same_file(source, target))
        return 1; // the copy would never end
    FILE *in = platform_open_to_read(source);
    FILE *out = platform_open_to_write(target, "ab");
    if (in != nullptr && out != nullptr) {
        copy_and_close(in, out);
        return 0;
    }
    if (in != nullptr)
        fclose(in);
    if (out != nullptr)
        fclose(out);
    return 1;
}
