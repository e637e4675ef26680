#include "system.h"

#include <cstdlib>
#include <filesystem>
#include <process.h>

std::string make_temp_dir()
{
    const std::filesystem::path temporary = std::filesystem::temp_directory_path();
    std::filesystem::path path;
    for (int i = _getpid(); path.empty() || !std::filesystem::create_directory(path); ++i)
        path = temporary / ("vek-test-" + std::to_string(i));
    return path.generic_string();
}

std::vector<std::string> variables()
{
    std::vector<std::string> all;
    for (char **entry = _environ; *entry != nullptr; ++entry)
        all.push_back(*entry);
    return all;
}

// The empty string unsets a variable on Windows.
bool set_variable(const std::string &name, const std::string &value)
{
    return _putenv_s(name.c_str(), value.c_str()) == 0;
}

void unset(const std::string &name)
{
    _putenv_s(name.c_str(), "");
}

void make_pipe(const std::string &)
{
}

void set_alarm(unsigned)
{
}

int run_program(const std::vector<std::string> &words)
{
    std::vector<std::string> quoted;
    std::vector<const char *> arguments;
    for (const std::string &word : words)
        quoted.push_back("\"" + word + "\"");
    for (const std::string &word : quoted)
        arguments.push_back(word.c_str());
    arguments.push_back(nullptr);
    return static_cast<int>(_spawnv(_P_WAIT, words[0].c_str(), arguments.data()));
}

bool is_root()
{
    return false;
}
