// Copying and appending files.

#include "files/files.h"
#include "host/message.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstring>

bool vek_file_verbose = true;

const char *name_for_message(char *path, char (&alias)[VEK_PATH_SIZE])
{
    text_copy(alias, vorn_vek_path2alias(path));
    return alias[0] == '\0' ? path : alias;
}

// A transfer that stops early is not noticed: the target stays as far as it
// got.  Closes both files.
static void transfer(FILE *source, FILE *target)
{
    char block[512];
    size_t length;
    do {
        length = fread(block, 1, sizeof block, source);
        fwrite(block, 1, length, target);
    } while (length == sizeof block);
    fclose(source);
    fclose(target);
}

// The system's text is taken first: finding the alias may change errno.
static int refuse(const char *what, char *path)
{
    char alias[VEK_PATH_SIZE];
    const char *reason = strerror(errno);
    const char *name = name_for_message(path, alias);
    report(REPORT_ERROR, "vorn_vek_copy_file2file", "%s '%s' : %s", what, name, reason);
    return 1;
}

static int refuse_same_file(char *target)
{
    char alias[VEK_PATH_SIZE];
    report(REPORT_ERROR, "vorn_vek_copy_file2file", "Old filename '%s' is same as new filename.",
           name_for_message(target, alias));
    return 1;
}

static FILE *open_target(const char *path)
{
    if (strlen(path) < VEK_PATH_SIZE)
        return fopen(path, "wb");
    errno = ENAMETOOLONG;
    return nullptr;
}

static void print_success(char *source, char *target)
{
    char alias[VEK_PATH_SIZE];
    report(REPORT_PLAIN, "vorn_vek_copy_file2file", "File '%s' successfully copied to",
           name_for_message(source, alias));
    report(REPORT_PLAIN, "vorn_vek_copy_file2file", "     '%s'.", name_for_message(target, alias));
}

int vorn_vek_copy_file2file(char *source, char *target)
{
    source = text_or_empty(source);
    target = text_or_empty(target);
    if (vek_strcasecmp(source, target) == 0 || platform_same_file(source, target))
        return refuse_same_file(target);
    FILE *from = platform_open_to_read(source, "rb");
    if (from == nullptr)
        return refuse("Could not open file", source);
    FILE *to = open_target(target);
    if (to == nullptr) {
        int result = refuse("Cannot create file", target);
        fclose(from);
        return result;
    }
    transfer(from, to);
    if (vek_file_verbose && vek_file_exists(target) != 0)
        print_success(source, target);
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
    source = text_or_empty(source);
    int level = vorn_vek_db2level(database);
    if (level == -1) {
        report(REPORT_ERROR, "vorn_vek_copy_file2db",
               "Invalid database alias '%s', file not copied.", text_or_empty(database));
        return 1;
    }
    // Wider than a path text: the copy refuses what is too long.
    char target[VEK_TBL_PATH_SIZE + 2 * VEK_PATH_SIZE];
    const char *base = vorn_vek_input2base(source);
    const char *ext = vorn_vek_input2ext(source);
    text_join(target, {vorn_vek_ext2path(ext, level), "/", base, ".", ext});
    return vorn_vek_copy_file2file(source, target);
}

int vorn_vek_append_file2file(const char *source, const char *target)
{
    source = text_or_empty(source);
    target = text_or_empty(target);
    if (platform_same_file(source, target))
        return 1; // would never end
    FILE *from = platform_open_to_read(source, "rb");
    FILE *to = fopen(target, "ab");
    if (from != nullptr && to != nullptr) {
        transfer(from, to);
        return 0;
    }
    if (from != nullptr)
        fclose(from);
    if (to != nullptr)
        fclose(to);
    return 1;
}
