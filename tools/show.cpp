// Commands that print what the session holds.

#include "commands.h"
#include "hsk_control.h"
#include "vek.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

// Both searches write into the name, so each gets a copy.
std::string search(std::string name, const std::string &file_class)
{
    char *block = vorn_vek_search_file(file_class.c_str(), name.data(), 1);
    std::string path = block;
    if (!path.empty())
        free(block);
    return path;
}

static std::string search_as_solver(std::string name, const std::string &file_class)
{
    int found = 0;
    char *result = db_search(name.data(), file_class.c_str(), &found);
    std::string path = found ? result : "";
    if (result != name.data() && *result)
        free(result);
    return path;
}

int show_files(const command_options &options)
{
    int missing = 0;
    for (const std::string &name : options.words) {
        std::string path = options.session.solver ? search_as_solver(name, options.file_class)
                                                  : search(name, options.file_class);
        if (path.empty()) {
            ++missing;
            path = name + ": not found";
        }
        puts(path.c_str());
    }
    return missing;
}

int show_aliases(const command_options &options)
{
    for (std::string path : options.words)
        puts(vorn_vek_path2alias(path.data()));
    return 0;
}

static const char *or_none(const char *string)
{
    return *string == '\0' ? "none" : string;
}

int show_defaults(const command_options &options)
{
    const char *format = "%-12s  %-16s  %s\n";
    std::printf(format, "Class", "Test rig", "Property file");
    for (const std::string &name : options.words)
        std::printf(format, name.c_str(), or_none(vorn_vek_get_def_testrig(name.c_str())),
                    or_none(vorn_vek_get_def_propfile(name.c_str())));
    return 0;
}

int show_environment(const command_options &)
{
    hsk_output_to_error(0);
    printenvars();
    hsk_output_to_error(1);
    return 0;
}

struct database_row {
    std::string name;
    std::string access; // as printed
    std::string path;
};

static bool is_write_default(const std::string &name)
{
    const char *default_name = vorn_vek_get_write_default();
    return default_name && vek_strcasecmp(default_name, name.c_str()) == 0;
}

static database_row database_at(int level)
{
    database_row row;
    row.name = vorn_vek_level2db(level);
    std::string alias = row.name;
    row.path = vorn_vek_alias2path(alias.data());
    if (vorn_vek_db_iswritable(row.name.c_str()))
        row.access = is_write_default(row.name) ? "writable, default" : "writable";
    return row;
}

// The path comes last, so that a long one shifts no other column.
static void print_row(const std::string &level, const database_row &row, int name_width)
{
    std::printf("%-5s  %-*s  %-17s  %s\n", level.c_str(), name_width, row.name.c_str(),
                row.access.c_str(), row.path.c_str());
}

int show_databases(const command_options &)
{
    std::vector<database_row> rows;
    size_t name_width = 4;
    for (int level = 1; level <= vorn_vek_get_number_of_veks(); ++level) {
        rows.push_back(database_at(level));
        name_width = std::max(name_width, rows.back().name.size());
    }
    print_row("Level", {"Name", "For writing", "Path"}, (int)name_width);
    for (size_t i = 0; i < rows.size(); ++i)
        print_row(std::to_string(i + 1), rows[i], (int)name_width);
    return 0;
}

static std::string create_temp_file()
{
    const char *dir = getenv("TMPDIR");
    std::string path = std::string(dir && *dir ? dir : "/tmp") + "/vekhost-XXXXXX";
    int file = mkstemp(path.data());
    if (file < 0)
        return {};
    close(file);
    return path;
}

static void print_file(const std::string &path)
{
    FILE *file = fopen(path.c_str(), "r");
    if (!file)
        return;
    for (int c = getc(file); c != EOF; c = getc(file))
        putchar(c);
    fclose(file);
}

int show_tables(const command_options &)
{
    std::string path = create_temp_file();
    if (path.empty()) {
        std::fprintf(stderr, "vekhost: no temporary file can be created\n");
        return 1;
    }
    int result = vorn_vek_tbl_info(path.c_str());
    if (result == 0)
        print_file(path);
    unlink(path.c_str());
    return result;
}

int show_session(const command_options &options)
{
    int code = options.outcome.code;
    const char *default_name = vorn_vek_get_write_default();
    std::printf("Product                    %s\n", vek_product_name());
    std::printf("Display name               %s\n", vek_product_string());
    std::printf("Databases                  %d\n", vorn_vek_get_number_of_veks());
    std::printf("Default writable database  %s\n", default_name ? default_name : "none");
    std::printf("Result                     %d, %s\n", code, code == 0 ? "started" : "failed");
    return code;
}
