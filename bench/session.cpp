// Operations of a running session: searches, and what is done in memory.

#include "measure.h"
#include "parts.h"

#include "vek.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

static void open_and_close(const std::string &path)
{
    int file = open(path.c_str(), O_RDONLY);
    if (file >= 0)
        close(file);
}

static void search(const sample &one, const std::string &name)
{
    char *found = vorn_vek_search_file(one.file_class.c_str(), const_cast<char *>(name.c_str()), 1);
    if (*found != '\0')
        free(found);
}

static void add_searches(const tree &made)
{
    add_measure(made, "search, hit/vek", [](const sample &one) { search(one, one.alias); });
    add_measure(made, "search, hit/floor", [](const sample &one) { open_and_close(one.path); });
    add_measure(made, "search, miss/vek",
                [](const sample &one) { search(one, one.missing_alias); });
    add_measure(made, "search, miss/floor",
                [](const sample &one) { open_and_close(one.missing_path); });
}

// The walk comes after the search of the name itself, so that is in the floor, too.
static void add_walk(const tree &made)
{
    add_measure(made, "level walk, miss/vek", [](const sample &one) {
        search(one, one.missing_alias);
    })->Setup([](const benchmark::State &) {
          setenv("KLV_VEK_SEARCH", "yes", 1);
      })->Teardown([](const benchmark::State &) { unsetenv("KLV_VEK_SEARCH"); });
    add_measure(made, "level walk, miss/floor", [](const sample &one) {
        open_and_close(one.missing_path);
        for (const std::string &path : one.candidates)
            open_and_close(path);
    });
}

static void add_lookups(const tree &made)
{
    add_measure(made, "name to path/vek", [](const sample &one) {
        benchmark::DoNotOptimize(vorn_vek_input2full(const_cast<char *>(one.alias.c_str())));
    });
    add_measure(made, "path to alias/vek", [](const sample &one) {
        benchmark::DoNotOptimize(vorn_vek_path2alias(const_cast<char *>(one.path.c_str())));
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
    // Its class is known, so that this is all but the making of the records.
    add_measure(made, "TABLE statement/vek", [](const sample &one) {
        benchmark::DoNotOptimize(vek_tbl_read(one.statement.c_str(), 0));
    });
}

// Each measure has to do what it is taken for.
static bool is_as_expected(const tree &made)
{
    for (const sample &one : made.samples) {
        char *found =
            vorn_vek_search_file(one.file_class.c_str(), const_cast<char *>(one.alias.c_str()), 1);
        bool is_found = one.path == found;
        if (*found != '\0')
            free(found);
        if (!is_found || vorn_vek_db2level(one.database.c_str()) != one.level ||
            vorn_vek_class2ext(one.file_class.c_str()) != one.ext ||
            one.path.rfind(vorn_vek_ext2path(one.ext.c_str(), one.level), 0) != 0)
            return false;
    }
    return true;
}

void add_session(const tree &made)
{
    if (!start_session() || !is_as_expected(made)) {
        fprintf(stderr, "The session does not start as it should\n");
        exit(1);
    }
    add_searches(made);
    add_walk(made);
    add_lookups(made);
#ifdef HAS_PHYSFS
    add_physfs(made);
#endif
#ifdef HAS_KPATHSEA
    add_kpathsea(made);
#endif
#ifdef HAS_QT
    add_qt(made);
#endif
}
