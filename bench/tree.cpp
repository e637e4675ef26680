#include "tree.h"

#include "hsk_control.h"
#include "vek.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace fs = std::filesystem;

// Words of various lengths, as real names have.  The number makes them unique.
static std::string word(int number)
{
    static const char *const syllables[] = {"da", "mper", "spri", "ng", "ty", "re", "bu", "sh"};
    unsigned state = static_cast<unsigned>(number) * 2654435761U;
    std::string text;
    for (unsigned i = 0; i < 2 + (state >> 28) % 3; ++i)
        text += syllables[(state >> (4 + 3 * i)) % 8];
    return text + std::to_string(number);
}

static std::string database_name(int level)
{
    return level == 1 ? "vorn_shared" : "db_" + word(level);
}

static std::string extension(int table)
{
    std::string text;
    for (int i = 0; i < 3; ++i, table /= 26)
        text += static_cast<char>('a' + table % 26);
    return text;
}

static std::string table_dir(int table)
{
    return word(table) + "s.tbl";
}

static void write_statements(const tree &made)
{
    std::ofstream shared(made.home + "/install/vorn/vorn.cfg");
    std::ofstream user(made.home + "/.vorn.cfg");
    for (int level = 1; level <= made.databases; ++level) {
        const size_t slot = static_cast<size_t>(level) - 1;
        (level < made.databases ? shared : user)
            << "DATABASE " << made.names[slot] << " " << made.database_dirs[slot] << "\n";
    }
    for (int table = 0; table < made.tables; ++table)
        shared << "TABLE " << word(table) << " " << table_dir(table) << " " << extension(table)
               << "\n";
    user << "DEFAULT_WRITE_DB " << made.names.back() << "\n";
}

static sample make_sample(const tree &made, int level, int table)
{
    sample one;
    const size_t slot = static_cast<size_t>(level) - 1;
    const std::string ext = extension(table), dir = table_dir(table);
    one.level = level;
    one.file_class = word(table);
    one.ext = ext;
    one.database = made.names[slot];
    one.statement = "TABLE unknown directory.tbl " + ext;
    one.mounted = one.database + "/" + dir + "/road_front." + ext;
    one.alias = "<" + one.database + ">/" + dir + "/road_front." + ext;
    one.url = "klvds://" + one.mounted;
    one.path = made.database_dirs[slot] + "/" + dir + "/road_front." + ext;
    one.missing_alias = "<" + one.database + ">/" + dir + "/trial_7." + ext;
    one.missing_path = made.database_dirs[slot] + "/" + dir + "/trial_7." + ext;
    for (const std::string &database : made.database_dirs) {
        one.candidates.push_back(database + "/" + dir + "/trial_7." + ext);
        one.directories += (one.directories.empty() ? "" : ":") + database + "/" + dir;
    }
    return one;
}

std::string temporary_directory()
{
    const char *parent = getenv("TMPDIR");
    std::string path = std::string(parent == nullptr ? "/tmp" : parent) + "/vek-bench-XXXXXX";
    return mkdtemp(path.data());
}

tree make_tree(const std::string &home, int databases, int tables, const std::string &subdirectory)
{
    tree made = {databases, tables, home, {}, {}, {}, {}};
    const std::string parent = home + subdirectory + "/";
    fs::create_directories(parent);
    fs::create_directories(made.home + "/install/vorn");
    for (int level = 1; level <= databases; ++level) {
        made.names.push_back(database_name(level));
        made.database_dirs.push_back(parent + made.names.back() + ".vek");
        fs::create_directory(made.database_dirs.back());
        for (int table = 0; table < tables; ++table) {
            made.table_dirs.push_back(made.database_dirs.back() + "/" + table_dir(table));
            fs::create_directory(made.table_dirs.back());
        }
    }
    write_statements(made);
    constexpr int count = 40;
    for (int i = 0; i < count; ++i) {
        made.samples.push_back(
            make_sample(made, 1 + i * databases / count, i * 7 % count * tables / count));
        std::ofstream(made.samples.back().path) << "x";
    }
    setenv("HOME", made.home.c_str(), 1);
    setenv("topdir", (made.home + "/install/").c_str(), 1);
    for (const char *name : {"KLV_PRODUCT_NAME", "KLV_VORN", "KLV_VORN_SITE", "KLV_VEK_SEARCH",
                             "KLV_VORN_PRIVATE_CFG"})
        unsetenv(name);
    return made;
}

void remove_tree(const tree &made)
{
    fs::remove_all(made.home);
}

void remove_table_dirs(const tree &made)
{
    for (const sample &one : made.samples)
        unlink(one.path.c_str());
    for (const std::string &dir : made.table_dirs)
        rmdir(dir.c_str());
}

void search(const sample &one, const std::string &name)
{
    char *found = vorn_vek_search_file(one.file_class.c_str(), text(name), 1);
    if (*found != '\0')
        free(found);
}

bool start_session()
{
    int out = dup(STDOUT_FILENO);
    int null_device = open("/dev/null", O_WRONLY);
    fflush(stdout);
    dup2(null_device, STDOUT_FILENO);
    bool is_good = vorn_vek_cfg_env_read("") == 0 && hsk_error_count() == 0;
    fflush(stdout);
    dup2(out, STDOUT_FILENO);
    close(null_device);
    close(out);
    return is_good;
}
