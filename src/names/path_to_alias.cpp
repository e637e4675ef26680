// Reverse lookup: from a path to a name.

#include "records.h"
#include "text/text.h"

#include <cstring>

static char vek_alias_buf[VEK_PATH_SIZE];

// Returns what follows the prefix in the path, or null if the path does not start
// with it.  The prefix may end in the middle of a component.  It is compared from its
// end, since sibling directories differ there.
static const char *skip_prefix_nocase(const char *path, const char *prefix)
{
    if (!char_equal_nocase(*path, *prefix) && *prefix != '\0')
        return nullptr;
    size_t length = strlen(prefix);
    if (strnlen(path, length) < length)
        return nullptr;
    for (size_t i = length; i > 0; --i)
        if (!char_equal_nocase(path[i - 1], prefix[i - 1]))
            return nullptr;
    return path + length;
}

// Returns the first table whose directory is a prefix of the path, or null.  `rest` is
// the path after the database's directory, or null if that is not a prefix.
static const vek_tbl_rec *find_table_by_path(const vek_db_rec *db, const char *rest)
{
    if (rest == nullptr || *rest != '/')
        return nullptr;
    for (int i = 0; i < db->tbl_count; ++i)
        if (skip_prefix_nocase(rest + 1, db->tbls[i]->dir) != nullptr)
            return db->tbls[i];
    return nullptr;
}

// The same for a whole path with "~" in it.  If its short form does not match, it is
// replaced by its long form.  While it has a "~" this is tried again at each table:
// the long form may become available meanwhile.
static const vek_tbl_rec *find_table_by_long_path(const vek_db_rec *db, char (&path)[VEK_PATH_SIZE])
{
    for (int i = 0; i < db->tbl_count; ++i) {
        const char *directory = db->tbls[i]->full_path;
        if (strchr(path, '~') != nullptr && skip_prefix_nocase(path, directory) == nullptr)
            text_copy(path, _vek_getlongpath(path));
        if (skip_prefix_nocase(path, directory) != nullptr)
            return db->tbls[i];
    }
    return nullptr;
}

static const char *as_path(const char *path)
{
    text_copy(vek_alias_buf, path);
    return vek_alias_buf;
}

// Returns the URL, or the path if the URL is too long.
static const char *as_url(const char *path, std::initializer_list<const char *> parts)
{
    return text_join(vek_alias_buf, parts) ? vek_alias_buf : as_path(path);
}

// Returns the name of a path in a table's directory, or the path itself if it is in
// a subdirectory of that.
static const char *name_in_table(const vek_db_rec *db, const vek_tbl_rec *table, char *path)
{
    char *rest = path + strlen(table->full_path);
    if (strlen(rest) >= 2 && strcmp(vorn_vek_input2file(rest), rest + 1) != 0)
        return as_path(path);
    const char *directory = strchr(table->alias, '>') + 1;
    return as_url(path, {"klvds://", db->name, directory, rest});
}

// Whether a path is a database's directory or directly in it.
static bool is_direct_child(const char *rest)
{
    return rest != nullptr && (*rest == '\0' || strchr(rest + 1, '/') == nullptr);
}

// The name of a path outside the databases: a file URL.
static const char *alias_outside(const char *path)
{
    bool is_alias = path[0] == '<' || text_starts_with(path, "klvds:");
    if (is_alias || path[0] == '\0')
        return as_path(path);
    return as_url(path, {"file://", path});
}

const char *vorn_vek_path2alias(char *text)
{
    char path[VEK_PATH_SIZE];
    text_copy(path, vorn_vek_nt2unix_path(text));
    for (int level = 1; level <= db_count(); ++level) {
        const vek_db_rec *db = db_at(level);
        bool is_short = strchr(path, '~') != nullptr;
        const vek_tbl_rec *table = is_short ? find_table_by_long_path(db, path) : nullptr;
        const char *rest = skip_prefix_nocase(path, db->path);
        if (!is_short)
            table = find_table_by_path(db, rest);
        if (table != nullptr)
            return name_in_table(db, table, path);
        if (is_direct_child(rest))
            return as_url(path, {"klvds://", db->name, rest});
    }
    return alias_outside(path);
}
