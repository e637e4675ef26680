#include "fixture.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

TempDirTest::TempDirTest()
{
    for (const std::string &variable : variables())
        if (variable.starts_with("KLV_") || variable.starts_with("QNS_") ||
            variable.starts_with("topdir="))
            unset(variable.substr(0, variable.find('=')));
    home = make_temp_dir();
    fs::current_path(home);
    set_env("HOME", home);
    make_dir(home + "-tmp"); // removed with whatever killed processes leave in it
    set_env(on_windows ? "TMP" : "TMPDIR", home + "-tmp");
}

TempDirTest::~TempDirTest()
{
    fs::current_path("/");
    std::error_code ignored; // some paths are too long for the system
    fs::remove_all(home, ignored);
    fs::remove_all(home + "-tmp", ignored);
}

void set_env(const std::string &name, const std::string &value)
{
    set_variable(name, value);
}

Buffer::Buffer(const std::string &text)
    : bytes(new char[std::max<size_t>(text.size() + 1, VEK_PATH_SIZE)])
{
    strcpy(bytes.get(), text.c_str());
}

std::string repeat_x(size_t count)
{
    return std::string(count, 'x');
}

std::string expand_repeats(std::string text)
{
    const std::string error = "Is a directory";
    if (size_t at = text.rfind(error); at != text.npos)
        text.replace(at, error.size(), directory_error);
    for (size_t at; (at = text.find('[')) != text.npos;)
        text.replace(at, text.find(']') + 1 - at, repeat_x(std::stoul(text.substr(at + 1))));
    return text;
}

static Lines split(const std::string &row, char separator)
{
    Lines cells;
    std::istringstream rest(expand_repeats(row) + separator);
    for (std::string cell; std::getline(rest, cell, separator);)
        cells.push_back(cell);
    return cells;
}

std::vector<Lines> rows(const std::string &table)
{
    std::vector<Lines> all;
    std::istringstream words(table);
    for (std::string word; words >> word;)
        all.push_back(split(word, '='));
    return all;
}

std::vector<Lines> table(const std::string &name)
{
    std::vector<Lines> all;
    std::istringstream lines(read_file(TEST_TABLES "/" + name + ".txt"));
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        for (std::string &cell : all.emplace_back(split(line, '|'))) {
            cell.erase(0, cell.find_first_not_of(' '));
            cell.erase(cell.find_last_not_of(' ') + 1);
        }
    }
    EXPECT_FALSE(all.empty()) << name;
    return all;
}

std::vector<Case> cases(const std::string &name)
{
    std::vector<Case> all;
    std::istringstream lines(read_file(TEST_TABLES "/" + name + ".txt"));
    for (std::string line; std::getline(lines, line);) {
        if (line[0] == '#')
            continue;
        if (line[0] == '@') {
            all.push_back({line.substr(1), "", ""});
            continue;
        }
        std::replace(line.begin(), line.end(), '~', '\t');
        bool is_output = line[0] == '>' || !all.back().output.empty();
        (is_output ? all.back().output : all.back().text) += expand_repeats(line) + "\n";
    }
    EXPECT_FALSE(all.empty()) << name;
    return all;
}

std::string drain_output()
{
    std::string all;
    for (const Lines &lines : {host::calls_of("vc_putenv"), host::printed()})
        for (const std::string &line : lines)
            all += "> " + line + "\n";
    return all;
}

int add_database(const std::string &operands, int cfg_index)
{
    return vek_db_read(("DATABASE " + operands).c_str(), cfg_index);
}

int add_table(const std::string &operands, int cfg_index)
{
    return vek_tbl_read(("TABLE " + operands).c_str(), cfg_index);
}

std::string names()
{
    std::string all;
    for (int level = 1; level <= vorn_vek_get_number_of_veks(); ++level)
        all += (level == 1 ? "" : " ") + std::string(vorn_vek_level2db(level));
    return all;
}

Lines databases()
{
    Lines rows;
    for (int level = 0; level < number_of_veks; ++level) {
        const vek_db_rec &db = *vek_list[level];
        std::string row = std::string(db.name) + " " + db.path + " " + std::to_string(db.cfg_index);
        for (int i = 0; i < db.tbl_count; ++i)
            row += std::string(i == 0 ? ": " : ", ") + db.tbls[i]->class_ + " " +
                   std::to_string(db.tbls[i]->cfg_index);
        rows.push_back(row);
    }
    return rows;
}

std::string search(char *name, int level, const std::string &file_class)
{
    char *result = vorn_vek_search_file(file_class.c_str(), name, level);
    std::string found = result;
    if (!found.empty())
        free(result);
    return found;
}

std::string reading(const std::string &path)
{
    return "Reading configuration file '" + path + "'";
}

void set_product(const std::string &name)
{
    set_env("KLV_PRODUCT_NAME", name);
    vek_set_product_name();
}

const std::string shared_cfg = "DATABASE vorn_shared shared.vek\n"
                               "TABLE damper dampers.tbl dpr\n"
                               "TABLE spring springs.tbl spr\n";
const std::string private_cfg = "DATABASE private $HOME/private.vek\n"
                                "DEFAULT_WRITE_DB private\n";

int start_session(const std::string &shared, const std::string &private_file)
{
    set_product("vorn");
    set_env("KLV_VORN", "inst");
    write_file("inst/vorn.cfg", shared);
    write_file(".vorn.cfg", private_file);
    return vorn_vek_init("vorn");
}
