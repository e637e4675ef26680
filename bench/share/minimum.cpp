// How few requests lead to the same results.
//
// D databases have T tables each, whose names fill R replies of a listing, one for
// each 24 or so where a reply has 4,096 bytes, one for each 190 where it has 32 KB.
//
// A look at a directory is a LOOKUP, which brings its attributes.  Names that a
// listing has brought need none.
//
// The attributes of a directory in which an entry was made or removed are outdated.
// Whatever is done in it next begins with a GETATTR.
//
// A probe for writing makes a file and removes it: LOOKUP, CREATE, GETATTR, UNLINK.
//
// A new directory takes LOOKUP, GETATTR and MKDIR, but no GETATTR where nothing was
// made before.  The kernel looks each name up, also when it is known to be free.
//
// Warm start: D * (6 + R) + 1.  Each database is looked at, listed (OPENDIR and R)
// and probed.  The end of the listing need not be seen when all tables were.  To
// look at each table instead takes T for R + 1.
//
// Cold start: D * (8 + 3 T) + 1.  Only a listing, of two replies up to its end, tells
// that no table is there.  The first table takes no GETATTR, but the probe does.
//
// In both, 1 is a GETATTR of the directory that the databases lie in.  A listing of
// it could take the place of the looks, if they all lay there; that is not presumed.
//
// A plug-in's start: 5.  Its database is looked at and probed.  The client knows the
// tables of the user's database since the start, that of the plug-in among them.
//
// Search: 2 for a hit, LOOKUP and OPEN; the attributes tell whether it is a file.  1
// for a miss, and D for a walk: the name itself is one of its candidates.
//
// New database: 3 T + 2, and 5 more where it is probed.  Nothing is in it, so it is
// not listed.  After its LOOKUP and MKDIR, the way into it is a GETATTR.  An existing
// one is that of a warm start: 6 + R.
//
// Copy: 3, LOOKUP and CREATE of the target, which is known to be new then, and WRITE.

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

// Take those that the directory has out of the wanted names.  It is read no further
// than to the last of them.
static void take_out_listed(name_set *wanted, name_set *listed, int dir)
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
    take_out_listed(&names, &listed, dir);
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
