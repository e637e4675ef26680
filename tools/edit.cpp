#include "edit.h"

#include "show.h"
#include "vek.h"

#include <cstdio>

int add_database(const std::string &name, const std::string &path, int level)
{
    int last = vorn_vek_get_number_of_veks() + 1;
    return vorn_vek_db_add(name.c_str(), path.c_str(), level == 0 ? last : level);
}

int remove_database(const std::string &name)
{
    return vorn_vek_db_remove(name.c_str());
}

int move_database(const std::string &name, int level)
{
    int result = vorn_vek_db_reorder(name.c_str(), level);
    return result == 0 ? show_databases() : result;
}

int choose_default(const std::string &name)
{
    if (!name.empty())
        return vorn_vek_set_write_default(name.c_str());
    const char *chosen = vorn_vek_get_write_default();
    puts(chosen ? chosen : "none");
    return chosen ? 0 : 1;
}

int save_session()
{
    return vorn_sav_cfg() == 1 ? 0 : 1;
}

int write_report(const std::string &what, const std::string &path)
{
    return what == "tables" ? vorn_vek_tbl_info(path.c_str()) : vorn_vek_db_info(path.c_str());
}

int make_database(const std::string &path)
{
    return vorn_cre_dat(path.c_str()) == 1 ? 0 : 1;
}
