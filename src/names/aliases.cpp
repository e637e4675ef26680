// The four forms of a name, and how each is resolved to a path.

#include "host/environment.h"
#include "names/names.h"
#include "records.h"
#include "text/text.h"

#include <cstring>

// Truncate a name to its database, which ends at the first `terminator`; *rest is
// what follows.  Returns false if there is no terminator.
static bool truncate_to_database(char *database, char terminator, const char **rest)
{
    char *pos = strchr(database, terminator);
    *rest = vek_empty_text;
    if (pos == nullptr)
        return false;
    *pos = '\0';
    *rest = pos + 1;
    return true;
}

void vek_split_alias(const char *text, char *database, char *standard, int *is_alias)
{
    const char *rest;
    text = text_or_empty(text);
    *is_alias = 1;
    if (strlen(text) >= VEK_PATH_SIZE) {
        database[0] = standard[0] = '\0';
    } else if (text_starts_with(text, "klvds://")) {
        text_copy(database, VEK_PATH_SIZE, text + strlen("klvds://"));
        const char *closing = truncate_to_database(database, '/', &rest) ? ">/" : ">";
        text_join(standard, VEK_PATH_SIZE, {"<", database, closing, rest});
    } else if (text[0] == '<') {
        text_copy(standard, VEK_PATH_SIZE, text);
        text_copy(database, VEK_PATH_SIZE, text + 1);
        truncate_to_database(database, '>', &rest);
    } else if (text_starts_with(text, "file://")) {
        text_copy(standard, VEK_PATH_SIZE, text + strlen("file://"));
        *is_alias = 0;
    } else {
        text_copy(standard, VEK_PATH_SIZE, text);
        text_copy(database, VEK_PATH_SIZE, text);
    }
}

const char *vorn_vek_standardize_alias(const char *text)
{
    static char vek_std_buf[VEK_PATH_SIZE];
    char database[VEK_PATH_SIZE];
    int is_alias;
    vek_split_alias(text, database, vek_std_buf, &is_alias);
    return vek_std_buf;
}

// Replace "shared" by the product's own shared database.
static void resolve_shared(char (&database)[VEK_PATH_SIZE], char (&standard)[VEK_PATH_SIZE])
{
    if (strcmp(database, "shared") != 0 || vek_product_name_is("dunmoren") != 0)
        return;
    char old[VEK_PATH_SIZE];
    text_copy(old, standard);
    size_t prefix_length = strlen("<shared");
    const char *rest = strlen(old) > prefix_length ? old + prefix_length : "";
    text_join(database, {vek_product_name(), "_shared"});
    text_join(standard, {"<", vek_product_name(), "_shared", rest});
}

const char *vorn_vek_alias2path(char *text)
{
    text = text_or_empty(text);
    size_t length = strlen(text);
    if (length >= VEK_PATH_SIZE)
        return text;
    char database[VEK_PATH_SIZE];
    char standard[VEK_PATH_SIZE];
    int is_alias;
    vek_split_alias(text, database, standard, &is_alias);
    if (is_alias == 0) {
        text_copy(text, length + 1, standard);
        return text;
    }
    resolve_shared(database, standard);
    const vek_db_rec *db = db_find(database);
    if (db == nullptr)
        return text;
    const vek_tbl_rec *table = table_of_alias(db, standard);
    return table == nullptr ? db->path : table->full_path;
}

static const vek_tbl_rec *find_table_by_dir(const char *directory)
{
    for (int level = 1; level <= db_count(); ++level) {
        const vek_db_rec *db = db_at(level);
        for (int i = 0; i < db->tbl_count; ++i)
            if (vek_strcasecmp(db->tbls[i]->full_path, directory) == 0)
                return db->tbls[i];
    }
    return nullptr;
}

const char *vorn_vek_input2tblpth(char *text)
{
    static char vek_tblpth_buf[VEK_TBL_PATH_SIZE];
    char path[VEK_PATH_SIZE]; // `text` may be in a buffer that is overwritten below
    text = vorn_vek_nt2unix_path(text);
    text_copy(path, text);
    const vek_tbl_rec *table = find_table_by_dir(vorn_vek_input2path(path));
    if (table == nullptr)
        return text;
    text_join(vek_tblpth_buf, {table->alias, "/", vorn_vek_input2file(path)});
    return vek_tblpth_buf;
}

const char *vorn_vek_input2full(char *text)
{
    static char vek_full_buf[VEK_PATH_SIZE];
    char name[VEK_PATH_SIZE];
    char directory[VEK_PATH_SIZE];
    text_copy(name, vorn_vek_nt2unix_path(text));
    vek_rm_extra_separators(name);
    const char *file = split_path(name, directory);
    const char *path = vorn_vek_alias2path(directory);
    text_join(vek_full_buf, {path, *path == '\0' ? "" : "/", file});
    return vek_full_buf;
}

const char *vorn_vek_expand2full(char *text)
{
    static char vek_expand_buf[VEK_PATH_SIZE];
    static bool vek_expand_on;
    if (env_is("KLV_VEK_EXPAND_PATH", "yes"))
        vek_expand_on = true;
    if (!vek_expand_on)
        return text_or_empty(text);
    text_copy(vek_expand_buf, vorn_vek_input2full(text));
    return vek_expand_buf;
}
