#include "support/harness.h"

#include "support/sandbox.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <unistd.h>

#include "vek.h"

namespace fs = std::filesystem;

std::string home;
host the_host;

void expect(bool condition, const char *description)
{
    if (condition)
        return;
    fprintf(stderr, "Check failed: %s\n", description);
    abort();
}

void expect_same(std::string_view expected, std::string_view actual)
{
    if (expected == actual)
        return;
    std::cerr << "Expected: " << expected << "\nActual: " << actual << "\n";
    EXPECT(expected == actual);
}

// ---- State of the library ----

// Defined by the linker: the starts and ends of the sections.
extern "C" {
extern uint64_t __start_vek_bss[], __stop_vek_bss[], __start_vek_data[], __stop_vek_data[];
}

#ifdef VEK_COVERAGE
extern "C" void __gcov_dump(), __gcov_reset();

// The counts are among the variables of the library: write them before these change.
static void write_coverage()
{
    const bool was_active = sandbox_active;
    sandbox_active = false;
    __gcov_dump();
    __gcov_reset();
    sandbox_active = was_active;
}
#else
static void write_coverage()
{
}
#endif

#ifdef __clang__
#define UNCHECKED __attribute__((no_sanitize("address"), no_builtin("memcpy")))
#else
#define UNCHECKED
#endif

// Not checked by the sanitizer, which poisons the bytes between the variables.
UNCHECKED static void copy_words(uint64_t *to, const uint64_t *from, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        to[i] = from[i];
}

struct state {
    std::vector<uint64_t> bss, data;
};
static state loaded, prepared;

static state save_state()
{
    write_coverage();
    state current = {std::vector<uint64_t>((size_t)(__stop_vek_bss - __start_vek_bss)),
                     std::vector<uint64_t>((size_t)(__stop_vek_data - __start_vek_data))};
    copy_words(current.bss.data(), __start_vek_bss, current.bss.size());
    copy_words(current.data.data(), __start_vek_data, current.data.size());
    return current;
}

static void restore(const state &saved)
{
    write_coverage();
    copy_words(__start_vek_bss, saved.bss.data(), saved.bss.size());
    copy_words(__start_vek_data, saved.data.data(), saved.data.size());
}

// ---- Environment ----

// Not setenv(): the C library never frees the values that it sets.
static std::map<std::string, std::string> variables, prepared_variables;
static std::vector<char *> entries;

static void publish_environment()
{
    entries.clear();
    for (auto &[name, entry] : variables)
        entries.push_back(entry.data());
    entries.push_back(nullptr);
    environ = entries.data();
}

void set_env(const char *name, const char *value)
{
    variables[name] = std::string(name) + "=" + value;
    publish_environment();
}

// ---- Files ----

void write_file(const std::string &name, std::string_view contents)
{
    std::ofstream(name, std::ios::binary) << contents;
}

std::string read_file(const std::string &name)
{
    std::ostringstream contents;
    contents << std::ifstream(name, std::ios::binary).rdbuf();
    return contents.str();
}

static std::set<fs::path> prepared_files;
static std::string temporary_dir; // the library's

static void remove_other_files()
{
    for (const fs::directory_entry &entry : fs::directory_iterator(home))
        if (!prepared_files.contains(entry.path()))
            fs::remove_all(entry);
    for (const fs::directory_entry &entry : fs::directory_iterator(temporary_dir))
        fs::remove_all(entry);
}

static void remove_home()
{
    std::error_code ignored;
    fs::remove_all(home, ignored);
}

static int next_descriptor()
{
    int descriptor = open("/dev/null", O_RDONLY);
    close(descriptor);
    return descriptor;
}

// ---- A run ----

static void set_up()
{
    const char *parent = getenv("TMPDIR");
    home = fs::canonical(parent != nullptr ? parent : "/tmp") /
           "fuzz-XXXXXX"; // canonical, as paths are compared with it
    if (mkdtemp(home.data()) == nullptr)
        abort();
    atexit(remove_home);
    fs::current_path(home);
    for (const char *name : {"HOME", "KLV_VORN", "TMPDIR"})
        set_env(name, home.c_str());
    set_env("KLV_PRODUCT_NAME", "vorn");
    temporary_dir = vorn_vek_tmp_file_path(); // created once per process
    loaded = save_state();
    the_host = {};
    prepare();
    prepared = save_state();
    prepared_variables = variables;
    for (const fs::directory_entry &entry : fs::directory_iterator(home))
        prepared_files.insert(entry.path());
}

void begin_process()
{
    sandbox_release_all();
    restore(loaded);
    variables = prepared_variables;
    publish_environment();
    fail_allocation(0);
}

static void begin_input()
{
    fs::current_path(home);
    begin_process();
    restore(prepared);
    the_host = {};
    the_host.answer = 1;
    remove_other_files();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size)
{
    fs::path initial_dir = fs::current_path(); // libFuzzer's relative paths start here
    if (home.empty())
        set_up();
    begin_input();
    int descriptor = next_descriptor();
    sandbox_active = true;
    run({(const char *)bytes, size});
    sandbox_active = false;
    sandbox_release_all();
    EXPECT(next_descriptor() == descriptor);
    EXPECT(fs::current_path() == home);
    fs::current_path(initial_dir);
    return 0;
}

std::vector<std::string> split(std::string_view string, std::string_view separator)
{
    std::vector<std::string> parts;
    for (;;) {
        size_t end = string.find(separator);
        parts.emplace_back(string.substr(0, end));
        if (end == string.npos)
            return parts;
        string.remove_prefix(end + separator.size());
    }
}
