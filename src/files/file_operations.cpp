// Deleting and renaming files.

#include "files/files.h"
#include "host/message.h"
#include "platform/platform.h"
#include "text/text.h"

#include <cerrno>
#include <cstring>

int vorn_vek_delete_file(char *path)
{
    constexpr const char *caller = "vorn_vek_delete_file";
    char alias[VEK_PATH_SIZE];
    file_path file;
    file_path_init(&file, path);
    const char *name = display_name(&file, alias);
    if (!file_path_is_usable(&file) || !platform_remove_file(file.text)) {
        report(REPORT_ERROR, caller, "Could not delete file '%s' : %s", name, strerror(errno));
        return 1;
    }
    // Another process may have created the file again.  Then no line is printed.
    if (vek_file_exists(file.text) == 0 && vek_file_verbose)
        print_line("File '%s' successfully deleted.", name);
    return 0;
}

int vorn_vek_delete_file_silent(char *path)
{
    vek_file_verbose = false;
    int result = vorn_vek_delete_file(path);
    vek_file_verbose = true;
    return result;
}

static int report_rename_failure(const char *old_name, const char *new_name)
{
    constexpr const char *caller = "vorn_vek_rename_file";
    char reason[VEK_PATH_SIZE]; // a copy: printing the first line may change the system's string
    text_truncate(reason, sizeof reason, strerror(errno));
    report(REPORT_ERROR, caller, "Could not rename file '%s' to", old_name);
    report(REPORT_ERROR, caller, "                      '%s' : %s", new_name, reason);
    return 1;
}

int vorn_vek_rename_file(char *old_path, char *new_path)
{
    char old_alias[VEK_PATH_SIZE];
    char new_alias[VEK_PATH_SIZE];
    file_path from, to;
    file_path_init(&from, old_path);
    file_path_init(&to, new_path);
    const char *old_name = display_name(&from, old_alias);
    const char *new_name = display_name(&to, new_alias);
    bool is_usable = file_path_is_usable(&from) && file_path_is_usable(&to);
    if (!is_usable || !platform_rename(from.text, to.text))
        return report_rename_failure(old_name, new_name);
    print_line("File '%s' successfully renamed to", old_name);
    print_line("     '%s'.", new_name);
    return 0;
}
