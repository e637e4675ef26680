// Copying files.

#include "parts.h"

#include "vek.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

static bool copy_by_library(std::string &from, std::string &to)
{
    return vorn_vek_copy_file2file_silent(from.data(), to.data()) == 0;
}

// With blocks of the library's size.
static bool copy_in_a_loop(std::string &from, std::string &to)
{
    static char block[32768];
    int in = open(from.c_str(), O_RDONLY);
    int out = open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    ssize_t length = 0;
    while ((length = read(in, block, sizeof block)) > 0)
        if (write(out, block, static_cast<size_t>(length)) != length)
            return false;
    close(in);
    close(out);
    return length == 0;
}

static bool copy_by_program(std::string &from, std::string &to)
{
    char name[] = "cp";
    char *words[] = {name, from.data(), to.data(), nullptr};
    pid_t child;
    int result = 1;
    if (posix_spawnp(&child, name, nullptr, nullptr, words, environ) == 0)
        waitpid(child, &result, 0);
    return result == 0;
}

static void add(const tree &made, const std::string &name, size_t size,
                bool (*copy)(std::string &from, std::string &to))
{
    const std::string from = made.home + "/from" + std::to_string(size);
    const std::string to = made.home + "/to" + std::to_string(size); // every copy truncates it
    std::ofstream(from) << std::string(size, 'x');
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
        std::string source = from, target = to;
        for (auto _ : state)
            if (!copy(source, target))
                state.SkipWithError("not copied");
        if (std::filesystem::file_size(target) != size)
            state.SkipWithError("truncated");
    })->UseRealTime();
}

void add_copies(const tree &made)
{
    struct {
        const char *name;
        size_t size;
    } const sizes[] = {{"1 KB", 1000}, {"1 MB", 1000000}, {"100 MB", 100000000}};
    for (auto [name, size] : sizes) {
        const std::string measure = std::string("copy of ") + name;
        add(made, measure + "/vek", size, copy_by_library);
        add(made, measure + "/baseline", size, copy_in_a_loop);
        add(made, measure + "/cp", size, copy_by_program);
    }
}
