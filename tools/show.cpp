#include "show.h"

#include "hsk_control.h"
#include "vek.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

// Both searches write into the name that they are given, so each gets a copy.
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

int show_files(const std::vector<std::string> &names, const std::string &file_class, bool solver)
{
    int missing = 0;
    for (const std::string &name : names) {
        std::string path = solver ? search_as_solver(name, file_class) : search(name, file_class);
        if (path.empty()) {
            ++missing;
            path = name + ": not found";
        }
        puts(path.c_str());
    }
    return missing;
}

int show_aliases(const std::vector<std::string> &paths)
{
    for (std::string path : paths)
        puts(vorn_vek_path2alias(path.data()));
    return 0;
}

static const char *or_none(const char *text)
{
    return *text == '\0' ? "none" : text;
}

int show_defaults(const std::vector<std::string> &classes)
{
    const char *format = "%-12s  %-16s  %s\n";
    std::printf(format, "Class", "Test rig", "Property file");
    for (const std::string &name : classes)
        std::printf(format, name.c_str(), or_none(vorn_vek_get_def_testrig(name.c_str())),
                    or_none(vorn_vek_get_def_propfile(name.c_str())));
    return 0;
}

int show_environment()
{
    hsk_output_to_error(0);
    printenvars();
    hsk_output_to_error(1);
    return 0;
}

struct database_row {
    std::string name;
    std::string marks;
    std::string path;
};

static bool is_write_default(const std::string &name)
{
    const char *chosen = vorn_vek_get_write_default();
    return chosen && vek_strcasecmp(chosen, name.c_str()) == 0;
}

static database_row database_at(int level)
{
    database_row row;
    row.name = vorn_vek_level2db(level);
    std::string alias = row.name;
    row.path = vorn_vek_alias2path(alias.data());
    if (vorn_vek_db_iswritable(row.name.c_str()))
        row.marks = is_write_default(row.name) ? "writable, default" : "writable";
    return row;
}

// The path comes last, so that a long one moves nothing.
static void print_row(const std::string &level, const database_row &row, int name_width)
{
    std::printf("%-5s  %-*s  %-17s  %s\n", level.c_str(), name_width, row.name.c_str(),
                row.marks.c_str(), row.path.c_str());
}

int show_databases()
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

static std::string make_scratch_file()
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

int show_tables()
{
    std::string path = make_scratch_file();
    if (path.empty()) {
        std::fprintf(stderr, "vekhost: no temporary file can be made\n");
        return 1;
    }
    int result = vorn_vek_tbl_info(path.c_str());
    if (result == 0)
        print_file(path);
    unlink(path.c_str());
    return result;
}

void show_session(int code)
{
    const char *chosen = vorn_vek_get_write_default();
    std::printf("Product              %s\n", vek_product_name());
    std::printf("Display name         %s\n", vek_product_string());
    std::printf("Databases            %d\n", vorn_vek_get_number_of_veks());
    std::printf("Default for writing  %s\n", chosen ? chosen : "none");
    std::printf("Result               %d, %s\n", code, code == 0 ? "started" : "failed");
}
