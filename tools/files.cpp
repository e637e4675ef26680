// Commands on files.

#include "commands.h"
#include "vek.h"

// The library may convert "\" to "/" in a path, so it gets copies.
int change_files(const command_options &options)
{
    string source = options.words.front(), target = options.words.back();
    if (options.command == "rename")
        return vorn_vek_rename_file(source.data(), target.data());
    if (options.command == "append")
        return vorn_vek_append_file2file(source.c_str(), target.c_str()) != 0 &&
               complain("'" + source + "' is not appended");
    if (options.command == "backup")
        return vek_backup_file(source.data()) != 0 && complain("there is no new backup");
    if (options.command == "delete")
        return vorn_vek_delete_file(source.data());
    if (options.database.empty())
        return vorn_vek_copy_file2file(source.data(), target.data());
    // The library would copy a file whose extension is in no table to the root directory.
    const vector<entry> tables = session_tables();
    const string ext = vorn_vek_input2ext(source.c_str());
    if (tables.empty() || complain(unknown_database(options.database)))
        return 1;
    if (find_entry(tables, ext, &entry::extension))
        return vorn_vek_copy_file2db(source.data(), options.database.c_str());
    string known;
    for (const entry &table : tables)
        known += " " + table.extension;
    return complain("no table has the extension '" + ext + "' of '" + source + "', only" + known);
}
