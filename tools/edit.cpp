// Commands that change the session, and reports.

#include "commands.h"
#include "vek.h"

#include <cstdio>

int add_database(const command_options &options)
{
    int last = vorn_vek_get_number_of_veks() + 1;
    return vorn_vek_db_add(options.words[0].c_str(), options.words[1].c_str(),
                           options.level == 0 ? last : options.level);
}

int remove_database(const command_options &options)
{
    return vorn_vek_db_remove(options.words[0].c_str());
}

int move_database(const command_options &options)
{
    int result = vorn_vek_db_reorder(options.database.c_str(), options.level);
    return result == 0 ? show_databases(options) : result;
}

int set_or_show_default(const command_options &options)
{
    if (!options.words.empty() && !options.words[0].empty())
        return vorn_vek_set_write_default(options.words[0].c_str());
    const char *name = vorn_vek_get_write_default();
    puts(name ? name : "none");
    return name ? 0 : 1;
}

int save_session(const command_options &)
{
    return vorn_sav_cfg() == 1 ? 0 : 1;
}

int write_report(const command_options &options)
{
    const char *path = options.words[1].c_str();
    return options.words[0] == "tables" ? vorn_vek_tbl_info(path) : vorn_vek_db_info(path);
}

int create_database(const command_options &options)
{
    return vorn_cre_dat(options.words[0].c_str()) == 1 ? 0 : 1;
}
