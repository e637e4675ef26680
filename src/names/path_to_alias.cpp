// The way back from a real path to a name.

#include "records.h"
#include "text/text.h"

#include <cstring>

static char vek_alias_buf[VEK_PATH_SIZE];

// What follows `start` in the path, null if the path does not begin with it.
// This does not ask whether a separator stands there.  Directories lie side by
// side, so that their paths differ towards the end.
static const char *skip_prefix_nocase(const char *path, const char *start)
{
    if (!char_equal_nocase(*path, *start) && *start != '\0')
        return nullptr;
    size_t length = strlen(start);
    if (strnlen(path, length) < length)
        return nullptr;
    for (size_t i = length; i > 0; --i)
        if (!char_equal_nocase(path[i - 1], start[i - 1]))
            return nullptr;
    return path + length;
}

// The table whose directory begins the path, of which `rest` follows that of the
// database; null if that does not begin it.
static const vek_tbl_rec *find_table(const vek_db_rec *db, const char *rest)
{
    if (rest == nullptr || *rest != '/')
        return nullptr;
    for (int i = 0; i < db->tbl_count; ++i)
        if (skip_prefix_nocase(rest + 1, db->tbls[i]->dir) != nullptr)
            return db->tbls[i];
    return nullptr;
}

// The same for a path with "~" in it, which is compared, and from then on used,
// in its long form where the short one differs; the long form is asked for again
// at each table, as it may be had by then.
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

// A URL that does not fit leaves the path as it is.
static const char *url(const char *path, std::initializer_list<const char *> parts)
{
    return text_join(vek_alias_buf, parts) ? vek_alias_buf : as_path(path);
}

// A path that goes deeper than the table's directory is given back plain.
static const char *name_in_table(const vek_db_rec *db, const vek_tbl_rec *table, char *path)
{
    char *rest = path + strlen(table->full_path);
    if (strlen(rest) >= 2 && strcmp(vorn_vek_input2file(rest), rest + 1) != 0)
        return as_path(path);
    const char *directory = strchr(table->alias, '>') + 1;
    return url(path, {"klvds://", db->name, directory, rest});
}

static bool is_direct_child(const char *rest)
{
    return rest != nullptr && (*rest == '\0' || strchr(rest + 1, '/') == nullptr);
}

static const char *alias_outside(const char *path)
{
    bool is_name_already = path[0] == '<' || text_starts_with(path, "klvds:");
    if (is_name_already || path[0] == '\0')
        return as_path(path);
    return url(path, {"file://", path});
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
            table = find_table(db, rest);
        if (table != nullptr)
            return name_in_table(db, table, path);
        if (is_direct_child(rest))
            return url(path, {"klvds://", db->name, rest});
    }
    return alias_outside(path);
}
