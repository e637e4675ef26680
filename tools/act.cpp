#include "act.h"

#include "vek.h"

int act_on_files(const std::string &command, std::vector<std::string> paths,
                 const std::string &database)
{
    char *first = paths.front().data();
    char *last = paths.back().data();
    if (command == "copy" && !database.empty())
        return vorn_vek_copy_file2db(first, database.c_str());
    if (command == "copy")
        return vorn_vek_copy_file2file(first, last);
    if (command == "rename")
        return vorn_vek_rename_file(first, last);
    if (command == "append")
        return vorn_vek_append_file2file(first, last);
    if (command == "backup")
        return vek_backup_file(first);
    return vorn_vek_delete_file(first);
}
