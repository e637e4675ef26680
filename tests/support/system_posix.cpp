#include "system.h"

#include <cstdlib>
#include <filesystem>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

std::string make_temp_dir()
{
    std::string path = std::filesystem::canonical(std::filesystem::temp_directory_path());
    path += "/vek-test-XXXXXX";
    if (mkdtemp(path.data()) == nullptr)
        abort();
    return path;
}

std::vector<std::string> variables()
{
    std::vector<std::string> all;
    for (char **entry = environ; *entry != nullptr; ++entry)
        all.push_back(*entry);
    return all;
}

bool set_variable(const std::string &name, const std::string &value)
{
    return setenv(name.c_str(), value.c_str(), 1) == 0;
}

void unset(const std::string &name)
{
    unsetenv(name.c_str());
}

void make_pipe(const std::string &path)
{
    if (mkfifo(path.c_str(), 0600) != 0)
        abort();
}

void set_alarm(unsigned seconds)
{
    alarm(seconds);
}

int run_program(const std::vector<std::string> &words)
{
    std::vector<char *> arguments;
    for (const std::string &word : words)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    pid_t child;
    int status;
    if (posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0 ||
        waitpid(child, &status, 0) != child)
        abort();
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

bool is_root()
{
    return geteuid() == 0;
}
