#include "files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

void make_dir(const std::string &path)
{
    fs::create_directories(path);
}

void write_file(const std::string &path, const std::string &text)
{
    if (fs::path parent = fs::path(path).parent_path(); !parent.empty())
        fs::create_directories(parent);
    std::ofstream(path, std::ios::binary) << text;
}

static std::string contents(const std::string &path, std::ios::openmode mode)
{
    std::ostringstream text;
    text << std::ifstream(path, mode).rdbuf();
    return text.str();
}

std::string read_file(const std::string &path)
{
    return contents(path, std::ios::binary | std::ios::in);
}

std::string read_text(const std::string &path)
{
    return contents(path, std::ios::in);
}

Lines listing(const std::string &dir)
{
    Lines names;
    for (const fs::directory_entry &entry : fs::directory_iterator(dir))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}
