// Copying and appending files.

#include "files/files.h"
#include "host/message.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstring>

bool vek_file_verbose = true;
int vek_copy_error;

void file_path_take(file_path *path, char *given)
{
    path->given = text_or_empty(given);
    if (text_copy(path->text, path->given))
        return;
    memset(path->text, 'x', sizeof path->text - 1);
    path->text[sizeof path->text - 1] = '\0';
}

const char *name_for_message(file_path *path, char (&alias)[VEK_PATH_SIZE])
{
    text_copy(alias, vorn_vek_path2alias(path->text));
    vorn_vek_nt2unix_path(path->given);
    return alias[0] == '\0' ? path->given : alias;
}

// A transfer that stops early is not told of: the target stays as far as it
// got.  Closes both files.
static void transfer(FILE *source, FILE *target)
{
    static char buffers[2][32768];
    setvbuf(source, buffers[0], _IOFBF, sizeof buffers[0]);
    setvbuf(target, buffers[1], _IOFBF, sizeof buffers[1]);
    char block[512];
    size_t length;
    do {
        length = platform_read(source, block, sizeof block);
        if ((length < sizeof block && ferror(source) != 0) ||
            fwrite(block, 1, length, target) < length)
            vek_copy_error = errno;
    } while (length == sizeof block);
    fclose(source);
    if (fclose(target) != 0)
        vek_copy_error = errno;
}

// The system's text is taken first: finding the alias may change errno.
static int refuse(const char *what, file_path *path)
{
    char alias[VEK_PATH_SIZE];
    const char *reason = strerror(errno);
    const char *name = name_for_message(path, alias);
    report(REPORT_ERROR, "vorn_vek_copy_file2file", "%s '%s' : %s", what, name, reason);
    return 1;
}

static int refuse_same_file(file_path *target)
{
    char alias[VEK_PATH_SIZE];
    report(REPORT_ERROR, "vorn_vek_copy_file2file", "Old filename '%s' is same as new filename.",
           name_for_message(target, alias));
    return 1;
}

static FILE *open_target(const file_path *target)
{
    if (strlen(target->given) < VEK_PATH_SIZE)
        return platform_open_to_write(target->text, "wb");
    errno = ENAMETOOLONG;
    return nullptr;
}

static void print_success(file_path *source, file_path *target)
{
    constexpr const char *caller = "vorn_vek_copy_file2file";
    char alias[VEK_PATH_SIZE];
    report(REPORT_PLAIN, caller, "File '%s' successfully copied to",
           name_for_message(source, alias));
    report(REPORT_PLAIN, caller, "     '%s'.", name_for_message(target, alias));
}

int vorn_vek_copy_file2file(char *source, char *target)
{
    file_path from, to;
    vek_copy_error = 0;
    file_path_take(&from, source);
    file_path_take(&to, target);
    if (vek_strcasecmp(from.given, to.given) == 0 || platform_same_file(from.text, to.text))
        return refuse_same_file(&to);
    FILE *in = platform_open_to_read(from.text, "rb");
    if (in == nullptr)
        return refuse("Could not open file", &from);
    FILE *out = open_target(&to);
    if (out == nullptr) {
        int result = refuse("Cannot create file", &to);
        fclose(in);
        return result;
    }
    transfer(in, out);
    if (vek_file_verbose && vek_file_exists(to.text) != 0)
        print_success(&from, &to);
    return 0;
}

int vorn_vek_copy_file2file_silent(char *source, char *target)
{
    vek_file_verbose = false;
    int result = vorn_vek_copy_file2file(source, target);
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
    file_path_take(&from, vorn_vek_nt2unix_path(source));
    const char *base = vorn_vek_input2base(from.text);
    const char *ext = vorn_vek_input2ext(from.text);
    bool may_be_known = strlen(ext) < VEK_EXT_SIZE; // its version counts, too
    const char *directory = may_be_known ? vorn_vek_ext2path(ext, level) : vek_empty_text;
    char target[VEK_TBL_PATH_SIZE + 2 * VEK_PATH_SIZE]; // the copy refuses what is too long
    text_join(target, {directory, "/", base, ".", ext});
    return vorn_vek_copy_file2file(from.text, target);
}

int vorn_vek_append_file2file(const char *source, const char *target)
{
    source = text_or_empty(source);
    target = text_or_empty(target);
    if (platform_same_file(source, target))
        return 1; // would never end
    FILE *in = platform_open_to_read(source, "rb");
    FILE *out = platform_open_to_write(target, "ab");
    if (in != nullptr && out != nullptr) {
        transfer(in, out);
        return 0;
    }
    if (in != nullptr)
        fclose(in);
    if (out != nullptr)
        fclose(out);
    return 1;
}
