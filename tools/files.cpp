// Commands on files.

#include "commands.h"
#include "vek.h"

// The library may convert "\" to "/" in a path, so each command passes copies.

int copy_file(const command_options &options)
{
    std::string source = options.words.front(), target = options.words.back();
    if (!options.database.empty())
        return vorn_vek_copy_file2db(source.data(), options.database.c_str());
    return vorn_vek_copy_file2file(source.data(), target.data());
}

int rename_file(const command_options &options)
{
    std::string old_path = options.words[0], new_path = options.words[1];
    return vorn_vek_rename_file(old_path.data(), new_path.data());
}

int append_file(const command_options &options)
{
    return vorn_vek_append_file2file(options.words[0].c_str(), options.words[1].c_str());
}

int back_up_file(const command_options &options)
{
    std::string path = options.words[0];
    return vek_backup_file(path.data());
}

int delete_file(const command_options &options)
{
    std::string path = options.words[0];
    return vorn_vek_delete_file(path.data());
}
