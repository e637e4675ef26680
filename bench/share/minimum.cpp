// The fewest requests that lead to the same results.
//
// There are D databases with T tables each.  The table names of a database fill R replies
// of a listing.  A reply of 4,096 bytes has about 24 names, one of 32 KB about 190.
//
// Looking up a directory takes a LOOKUP, which returns its attributes.  Names that a
// listing has returned need none.
//
// Creating or removing an entry invalidates the attributes of its directory.  The next
// operation in the directory begins with a GETATTR.
//
// A probe for writing creates and removes a file: LOOKUP, CREATE, GETATTR, UNLINK.
//
// A new directory takes LOOKUP, GETATTR and MKDIR.  The GETATTR is not needed where
// nothing was created before.  The kernel looks up each name even if it is known not to
// exist.
//
// Warm start: D * (6 + R) + 1.  Each database is looked up, listed (OPENDIR and R) and
// probed.  The listing can stop once all tables were seen.  Looking up each table instead
// takes T requests in place of R + 1.
//
// Cold start: D * (8 + 3 T) + 1.  Only a listing, of two replies up to its end, shows
// that no table exists.  The first table takes no GETATTR, but the probe does.
//
// In both, the 1 is a GETATTR of the directory that holds the databases.  A listing of
// that directory could replace the lookups if all databases lay in it, but that is not
// assumed.
//
// A plug-in's start: 5.  Its database is looked up and probed.  The client has cached the
// tables of the user's database since the start, that of the plug-in among them.
//
// Search: 2 for a hit, LOOKUP and OPEN; the attributes show whether it is a file.  1 for a
// miss.  D for a walk: the name itself is one of its candidates.
//
// New database: 3 T + 2, and 5 more if it is probed.  It is empty, so it is not listed.
// After its LOOKUP and MKDIR, entering it takes a GETATTR.  An existing database takes
// what it takes in a warm start: 6 + R.
//
// Copy: 3, a LOOKUP of the target, which shows that it is new, a CREATE and a WRITE.

#include "minimum.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

using name_set = std::set<std::string>;

static name_set table_names(const tree &made)
{
    name_set names;
    for (int table = 0; table < made.tables; ++table) {
        const std::string &dir = made.table_dirs[static_cast<size_t>(table)];
        names.insert(dir.substr(dir.rfind('/') + 1));
    }
    return names;
}

// Move the names that the directory contains from `wanted` to `listed`.  Reading stops
// after the last of them.
static void move_listed(name_set *wanted, name_set *listed, int dir)
{
    DIR *stream = fdopendir(dup(dir));
    const dirent *entry;
    while (!wanted->empty() && (entry = readdir(stream)) != nullptr)
        if (wanted->erase(entry->d_name) > 0)
            listed->insert(entry->d_name);
    closedir(stream);
}

static bool is_accessible(int dir, const std::string &name)
{
    struct stat status;
    return fstatat(dir, (name + "/.").c_str(), &status, 0) == 0;
}

static bool make_dirs(int dir, const name_set &names)
{
    return std::all_of(names.begin(), names.end(), [dir](const std::string &name) {
        return mkdirat(dir, name.c_str(), 0777) == 0;
    });
}

static bool are_accessible(int dir, const name_set &names)
{
    return std::all_of(names.begin(), names.end(),
                       [dir](const std::string &name) { return is_accessible(dir, name); });
}

static bool probe(int dir)
{
    constexpr const char *name = "tmp_bedwvorn.txt";
    int file = openat(dir, name, O_WRONLY | O_CREAT | O_EXCL, 0666);
    close(file);
    return file >= 0 && unlinkat(dir, name, 0) == 0;
}

static bool complete_tables(int dir, name_set names)
{
    name_set listed;
    move_listed(&names, &listed, dir);
    return are_accessible(dir, listed) && make_dirs(dir, names);
}

static int open_dir(const std::string &path)
{
    return open(path.c_str(), O_RDONLY | O_DIRECTORY);
}

static bool start_database(const std::string &path, const name_set &names)
{
    int dir = open_dir(path);
    bool is_good = dir >= 0 && complete_tables(dir, names) && probe(dir);
    close(dir);
    return is_good;
}

bool minimum_start(const tree &made)
{
    const name_set names = table_names(made);
    return std::all_of(made.database_dirs.begin(), made.database_dirs.end(),
                       [&names](const std::string &path) { return start_database(path, names); });
}

bool minimum_plugin_start(const tree &made, const std::string &database, const std::string &table)
{
    name_set names = table_names(made);
    names.insert(table);
    int own = open(database.c_str(), O_PATH | O_DIRECTORY);
    int user = open(made.database_dirs.back().c_str(), O_PATH | O_DIRECTORY);
    bool is_good = probe(own) && are_accessible(user, names);
    close(own);
    close(user);
    return is_good;
}

bool minimum_hit(const sample &one)
{
    struct stat status;
    int file = open(one.path.c_str(), O_RDONLY);
    bool is_found = file >= 0 && fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    close(file);
    return is_found;
}

static bool is_missing(const std::string &path)
{
    return open(path.c_str(), O_RDONLY) < 0 && errno == ENOENT;
}

bool minimum_miss(const sample &one)
{
    return is_missing(one.missing_path);
}

bool minimum_walk(const sample &one)
{
    return std::all_of(one.candidates.begin(), one.candidates.end(), is_missing);
}

static bool create(const tree &made, const std::string &database, bool is_probed)
{
    if (mkdir(database.c_str(), 0777) != 0)
        return false;
    int dir = open(database.c_str(), O_PATH | O_DIRECTORY);
    bool is_good = make_dirs(dir, table_names(made)) && (!is_probed || probe(dir));
    close(dir);
    return is_good;
}

bool minimum_create(const tree &made, const std::string &database)
{
    return create(made, database, false);
}

bool minimum_add_new(const tree &made, const std::string &database)
{
    return create(made, database, true);
}

bool minimum_add_existing(const tree &made, const std::string &database)
{
    return start_database(database, table_names(made));
}

bool minimum_copy(const std::string &source, const std::string &target)
{
    static char block[4096];
    int in = open(source.c_str(), O_RDONLY);
    int out = open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
    ssize_t length = read(in, block, sizeof block);
    bool is_good = length > 0 && write(out, block, static_cast<size_t>(length)) == length;
    close(in);
    close(out);
    return is_good;
}
