#include "measures.h"
#include "../peers/peers.h"
#include "minimum.h"

#include "hsk_control.h"
#include "vek.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

constexpr size_t copied_size = 1000;

static const sample &the_sample(const tree &made)
{
    return made.samples[made.samples.size() / 2];
}

static std::string on_share(const tree &made, const char *name)
{
    return made.home + share_subdirectory + "/" + name;
}

static std::string new_database(const tree &made)
{
    return on_share(made, "ideas.vek");
}

static std::string plugin_database(const tree &made)
{
    return on_share(made, "heron.vek");
}

static std::string copy_source(const tree &made)
{
    return made.home + "/trial_7." + the_sample(made).ext;
}

static void nothing(const tree &)
{
}

// Preparation and checks on the disk.

static std::vector<std::string> new_table_dirs(const tree &made)
{
    std::vector<std::string> dirs;
    for (size_t table = 0; table < static_cast<size_t>(made.tables); ++table) {
        const std::string &first = made.table_dirs[table];
        dirs.push_back(new_database(made) + first.substr(first.rfind('/')));
    }
    return dirs;
}

static void make_new_database(const tree &made)
{
    for (const std::string &dir : new_table_dirs(made))
        fs::create_directories(dir);
}

// The directory of its table already exists in the user's database.
static void make_plugin(const tree &made)
{
    const std::string dir = made.home + "/install/heron";
    fs::create_directories(dir);
    std::ofstream(dir + "/heron.cfg")
        << "DATABASE heron " << plugin_database(made) << "\nTABLE tread treads.tbl trd\n";
    fs::create_directory(plugin_database(made));
    fs::create_directory(made.database_dirs.back() + "/treads.tbl");
}

static void make_copy_source(const tree &made)
{
    std::ofstream(copy_source(made)) << std::string(copied_size, 'x');
}

static bool are_dirs(const std::vector<std::string> &paths)
{
    return std::all_of(paths.begin(), paths.end(),
                       [](const std::string &path) { return fs::is_directory(path); });
}

static bool has_tables(const tree &made)
{
    return are_dirs(made.table_dirs);
}

static bool has_new_tables(const tree &made)
{
    return has_tables(made) && are_dirs(new_table_dirs(made));
}

static bool has_copy(const tree &made)
{
    return has_tables(made) && fs::file_size(the_sample(made).missing_path) == copied_size;
}

// The library's measures.

static bool has_no_messages()
{
    return hsk_error_count() == 0 && hsk_warning_count() == 0;
}

static bool start(const tree &)
{
    return start_session() && has_no_messages();
}

// If the preparation fails, the measure after it fails, too.
static void prepare_session(const tree &made)
{
    start(made);
}

static void prepare_walk(const tree &made)
{
    start(made);
    setenv("KLV_VEK_SEARCH", "yes", 1);
}

static bool start_plugin(const tree &)
{
    return vorn_vek_cfg_env_read("heron") == 0 && vorn_vek_db2level("heron") > 0 &&
           has_no_messages();
}

static bool finds(const sample &one, const std::string &name, const std::string &path)
{
    char *found = vorn_vek_search_file(one.file_class.c_str(), text(name), 1);
    bool is_found = path == found;
    if (*found != '\0')
        free(found);
    return is_found && has_no_messages();
}

static bool find(const tree &made)
{
    return finds(the_sample(made), the_sample(made).alias, the_sample(made).path);
}

static bool miss(const tree &made)
{
    return finds(the_sample(made), the_sample(made).missing_alias, "");
}

static bool resolve(const tree &made)
{
    return vorn_vek_input2full(text(the_sample(made).alias)) == the_sample(made).path;
}

static bool add_database(const tree &made)
{
    return vorn_vek_db_add("ideas", new_database(made).c_str(), 1) == 0 && has_no_messages();
}

static bool create_database(const tree &made)
{
    return vorn_cre_dat(new_database(made).c_str()) == 1 && has_no_messages();
}

static bool copy_to_database(const tree &made)
{
    std::string source = copy_source(made);
    return vorn_vek_copy_file2db(source.data(), the_sample(made).database.c_str()) == 0 &&
           has_no_messages();
}

// The measures of the minimum and the peers begin with the cache of a started session.

static void cache_directories(const tree &made)
{
    for (const std::string &database : made.database_dirs)
        for (fs::directory_iterator table(database), end; table != end; ++table)
            continue;
    has_tables(made);
}

template <void (*start)(const tree &made)> static void prepare_peer(const tree &made)
{
    cache_directories(made);
    start(made);
}

template <bool (*query)(const sample &one)> static bool of_sample(const tree &made)
{
    return query(the_sample(made));
}

template <bool (*work)(const tree &made, const std::string &database)>
static bool of_new_database(const tree &made)
{
    return work(made, new_database(made));
}

static bool minimum_plugin(const tree &made)
{
    return minimum_plugin_start(made, plugin_database(made), "treads.tbl");
}

static bool minimum_copy_to_database(const tree &made)
{
    return minimum_copy(copy_source(made), the_sample(made).missing_path);
}

const std::vector<measure> measures = {
    {"cold start/vek", remove_table_dirs, nothing, start, has_tables},
    {"cold start/minimum", remove_table_dirs, nothing, minimum_start, has_tables},
    {"warm start/vek", nothing, nothing, start, has_tables},
    {"warm start/minimum", nothing, nothing, minimum_start, has_tables},
    {"plug-in's start/vek", make_plugin, prepare_session, start_plugin, has_tables},
    {"plug-in's start/minimum", make_plugin, cache_directories, minimum_plugin, has_tables},
    {"search, hit/vek", nothing, prepare_session, find, has_tables},
    {"search, hit/minimum", nothing, cache_directories, of_sample<minimum_hit>, has_tables},
#ifdef HAS_PHYSFS
    {"search, hit/PhysicsFS", nothing, prepare_peer<physfs_start>, of_sample<physfs_search>,
     has_tables},
#endif
    {"search, miss/vek", nothing, prepare_session, miss, has_tables},
    {"search, miss/minimum", nothing, cache_directories, of_sample<minimum_miss>, has_tables},
    {"level walk, miss/vek", nothing, prepare_walk, miss, has_tables},
    {"level walk, miss/minimum", nothing, cache_directories, of_sample<minimum_walk>, has_tables},
#ifdef HAS_KPATHSEA
    {"level walk, miss/kpathsea", nothing, prepare_peer<kpathsea_start>, of_sample<kpathsea_walk>,
     has_tables},
#endif
    {"name to path/vek", nothing, prepare_session, resolve, has_tables},
#ifdef HAS_QT
    {"name to path/Qt", nothing, prepare_peer<qt_start>, of_sample<qt_resolve>, has_tables},
#endif
    {"new database added/vek", nothing, prepare_session, add_database, has_new_tables},
    {"new database added/minimum", nothing, cache_directories, of_new_database<minimum_add_new>,
     has_new_tables},
    {"existing database added/vek", make_new_database, prepare_session, add_database,
     has_new_tables},
    {"existing database added/minimum", make_new_database, cache_directories,
     of_new_database<minimum_add_existing>, has_new_tables},
    {"database created/vek", nothing, prepare_session, create_database, has_new_tables},
    {"database created/minimum", nothing, cache_directories, of_new_database<minimum_create>,
     has_new_tables},
    {"copy into a database/vek", make_copy_source, prepare_session, copy_to_database, has_copy},
    {"copy into a database/minimum", make_copy_source, cache_directories, minimum_copy_to_database,
     has_copy},
};
