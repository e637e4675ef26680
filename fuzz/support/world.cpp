#include "support/world.h"

#include "support/confined.h"

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

void expect(bool fact, const char *fact_text)
{
    if (fact)
        return;
    fprintf(stderr, "Not so: %s\n", fact_text);
    abort();
}

void expect_same(std::string_view one, std::string_view other)
{
    if (one == other)
        return;
    std::cerr << "One: " << one << "\nOther: " << other << "\n";
    EXPECT(one == other);
}

// ---- Variables of the library ----

// The linker's names for the beginnings and ends of the sections.
extern "C" {
extern uint64_t __start_vek_bss[], __stop_vek_bss[], __start_vek_data[], __stop_vek_data[];
}

// Word by word, since what lies between the variables must not be looked at.
__attribute__((no_sanitize("address"), no_builtin("memcpy"))) static void
copy_words(uint64_t *to, const uint64_t *from, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        to[i] = from[i];
}

struct values {
    std::vector<uint64_t> bss, data;
};
static values loaded, prepared;

static values take_values()
{
    values now = {std::vector<uint64_t>((size_t)(__stop_vek_bss - __start_vek_bss)),
                  std::vector<uint64_t>((size_t)(__stop_vek_data - __start_vek_data))};
    copy_words(now.bss.data(), __start_vek_bss, now.bss.size());
    copy_words(now.data.data(), __start_vek_data, now.data.size());
    return now;
}

static void restore(const values &then)
{
    copy_words(__start_vek_bss, then.bss.data(), then.bss.size());
    copy_words(__start_vek_data, then.data.data(), then.data.size());
}

// ---- Environment ----

// Of our own, as the C library keeps the memory of each value ever set.
static std::map<std::string, std::string> variables, prepared_variables;
static std::vector<char *> entries;

static void show_environment()
{
    entries.clear();
    for (auto &[name, entry] : variables)
        entries.push_back(entry.data());
    entries.push_back(nullptr);
    environ = entries.data();
}

void set(const char *name, const char *value)
{
    variables[name] = std::string(name) + "=" + value;
    show_environment();
}

// ---- Files ----

void put_file(const std::string &name, std::string_view text)
{
    std::ofstream(name, std::ios::binary) << text;
}

std::string get_file(const std::string &name)
{
    std::ostringstream text;
    text << std::ifstream(name, std::ios::binary).rdbuf();
    return text.str();
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

static void make_world()
{
    const char *parent = getenv("TMPDIR");
    home = fs::canonical(parent != nullptr ? parent : "/tmp") / "fuzz-XXXXXX"; // as it is compared
    if (mkdtemp(home.data()) == nullptr)
        abort();
    atexit(remove_home);
    fs::current_path(home);
    for (const char *name : {"HOME", "KLV_VORN", "TMPDIR"})
        set(name, home.c_str());
    set("KLV_PRODUCT_NAME", "vorn");
    temporary_dir = vorn_vek_tmp_file_path(); // is made once a process
    loaded = take_values();
    the_host = {};
    prepare();
    prepared = take_values();
    prepared_variables = variables;
    for (const fs::directory_entry &entry : fs::directory_iterator(home))
        prepared_files.insert(entry.path());
}

void begin_process()
{
    confined_release_all();
    restore(loaded);
    variables = prepared_variables;
    show_environment();
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
    fs::path outside = fs::current_path(); // whence the fuzzer knows its files
    if (home.empty())
        make_world();
    begin_input();
    int descriptor = next_descriptor();
    sandbox = true;
    run({(const char *)bytes, size});
    sandbox = false;
    confined_release_all();
    EXPECT(next_descriptor() == descriptor);
    EXPECT(fs::current_path() == home);
    fs::current_path(outside);
    return 0;
}

std::vector<std::string> split(std::string_view text, std::string_view separator)
{
    std::vector<std::string> pieces;
    for (;;) {
        size_t end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == text.npos)
            return pieces;
        text.remove_prefix(end + separator.size());
    }
}
