// Operations of a running session: searches, and operations in memory.

#include "measure.h"
#include "parts.h"
#include "peers/peers.h"

#include "vek.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static void open_and_close(const std::string &path)
{
    int file = open(path.c_str(), O_RDONLY);
    if (file >= 0)
        close(file);
}

// A directory opens as well, so the type of the opened file has to be checked.
static void open_stat_and_close(const std::string &path)
{
    struct stat status;
    int file = open(path.c_str(), O_RDONLY);
    if (file >= 0 && fstat(file, &status) == 0)
        close(file);
}

static void add_searches(const tree &made)
{
    add_measure(made, "search, hit/vek", [](const sample &one) { search(one, one.alias); });
    add_measure(made, "search, hit/baseline", [](const sample &one) { open_and_close(one.path); });
    add_measure(made, "search, hit/minimum",
                [](const sample &one) { open_stat_and_close(one.path); });
    add_measure(made, "search, miss/vek",
                [](const sample &one) { search(one, one.missing_alias); });
    add_measure(made, "search, miss/baseline",
                [](const sample &one) { open_and_close(one.missing_path); });
}

// The walk comes after a search for the name itself, so the baseline includes that, too.
static void add_walk(const tree &made)
{
    add_measure(made, "level walk, miss/vek", [](const sample &one) {
        search(one, one.missing_alias);
    })->Setup([](const benchmark::State &) {
          setenv("KLV_VEK_SEARCH", "yes", 1);
      })->Teardown([](const benchmark::State &) { unsetenv("KLV_VEK_SEARCH"); });
    add_measure(made, "level walk, miss/baseline", [](const sample &one) {
        open_and_close(one.missing_path);
        for (const std::string &path : one.candidates)
            open_and_close(path);
    });
}

static void add_lookups(const tree &made)
{
    add_measure(made, "name to path/vek", [](const sample &one) {
        benchmark::DoNotOptimize(vorn_vek_input2full(text(one.alias)));
    });
    add_measure(made, "path to alias/vek", [](const sample &one) {
        benchmark::DoNotOptimize(vorn_vek_path2alias(text(one.path)));
    });
    add_measure(made, "class to extension/vek", [](const sample &one) {
        benchmark::DoNotOptimize(vorn_vek_class2ext(one.file_class.c_str()));
    });
    add_measure(made, "extension to path/vek", [](const sample &one) {
        benchmark::DoNotOptimize(vorn_vek_ext2path(one.ext.c_str(), one.level));
    });
    add_measure(made, "name to level/vek", [](const sample &one) {
        benchmark::DoNotOptimize(vorn_vek_db2level(one.database.c_str()));
    });
    // Its extension is known, so this is everything but the creation of the records.
    add_measure(made, "TABLE statement/vek", [](const sample &one) {
        benchmark::DoNotOptimize(vek_tbl_read(one.statement.c_str(), 0));
    });
}

static bool finds(const sample &one, const std::string &name, const std::string &path)
{
    char *found = vorn_vek_search_file(one.file_class.c_str(), text(name), 1);
    bool is_found = path == found;
    if (*found != '\0')
        free(found);
    return is_found;
}

// Whether each measured operation returns the right result.
static bool is_as_expected(const tree &made)
{
    bool is_good = true;
    for (const sample &one : made.samples) {
        is_good &= finds(one, one.alias, one.path) && finds(one, one.missing_alias, "");
        is_good &= vorn_vek_input2full(text(one.alias)) == one.path;
        is_good &= vorn_vek_path2alias(text(one.path)) == one.url;
        is_good &= vorn_vek_class2ext(one.file_class.c_str()) == one.ext;
        is_good &= one.path.rfind(vorn_vek_ext2path(one.ext.c_str(), one.level), 0) == 0;
        is_good &= vorn_vek_db2level(one.database.c_str()) == one.level;
        is_good &= vek_tbl_read(one.statement.c_str(), 0) == 0;
        setenv("KLV_VEK_SEARCH", "yes", 1);
        is_good &= finds(one, "road_front", one.path) && finds(one, one.missing_alias, "");
        unsetenv("KLV_VEK_SEARCH");
    }
    return is_good;
}

[[maybe_unused]] static void add_peer(const tree &made, const char *name,
                                      void (*start)(const tree &made),
                                      bool (*query)(const sample &one))
{
    start(made);
    if (!std::all_of(made.samples.begin(), made.samples.end(), query)) {
        fprintf(stderr, "%s: wrong result\n", name);
        exit(1);
    }
    add_measure(made, name, query);
}

static void add_peers([[maybe_unused]] const tree &made)
{
#ifdef HAS_PHYSFS
    add_peer(made, "search, hit/PhysicsFS", physfs_start, physfs_search);
#endif
#ifdef HAS_KPATHSEA
    add_peer(made, "level walk, miss/kpathsea", kpathsea_start, kpathsea_walk);
#endif
#ifdef HAS_QT
    add_peer(made, "name to path/Qt", qt_start, qt_resolve);
#endif
}

void add_session(const tree &made)
{
    if (!start_session() || !is_as_expected(made)) {
        fprintf(stderr, "The session did not start correctly\n");
        exit(1);
    }
    add_searches(made);
    add_walk(made);
    add_lookups(made);
    add_peers(made);
}
