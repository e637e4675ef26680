// All operations on one string, in a session with several databases.

#include "records.h"
#include "support/checks.h"
#include "support/harness.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

static const char shared_cfg[] = "DATABASE vorn_shared shared.vek\n"
                                 "DATABASE other $HOME/shared.vek/other.vek\n"
                                 "DATABASE c.d c.d\n"
                                 "TABLE damper dampers.tbl dpr\n"
                                 "TABLE spring springs.tbl spr\n"
                                 "TABLE road roads.tbl r\n";
static const char private_cfg[] = "DATABASE private private.vek\n"
                                  "DEFAULT_WRITE_DB private\n"
                                  "TESTRIG damper rig\n";

void prepare()
{
    set_env("KLV_VEK_SEARCH", "yes");
    set_env("KLV_VEK_EXPAND_PATH", "yes");
    set_env("SELF", "$SELF");
    set_env("RING", "$GNIR/a");
    set_env("GNIR", "$RING");
    set_env("LONG", std::string(200, 'x').c_str());
    write_file("vorn.cfg", shared_cfg);
    write_file(".vorn.cfg", private_cfg);
    vek_set_product_name();
    EXPECT(vorn_vek_init("vorn") == 0);
    for (const char *name : {"shared.vek/dampers.tbl/a.dpr", "private.vek/springs.tbl/b.spr",
                             "c.d/roads.tbl/c.r", "shared.vek/other.vek/d.x", "e"})
        write_file(name, name);
}

// What an operation does to the caller's string.
enum effect { UNCHANGED, BACKSLASHES_CONVERTED, SLASHES_CONVERTED, OVERWRITTEN };

struct string_operation {
    const char *(*call)(char *string);
    enum effect effect;
    size_t size; // of the result, if that is not the caller's string; 0: not checked
};

template <const char *(*call)(const char *)> static const char *unchanging(char *string)
{
    return call(string);
}
template <char *(*call)(char *)> static const char *changing(char *string)
{
    return call(string);
}

static const string_operation operations[] = {
    {changing<vek_eval_str>, OVERWRITTEN, VEK_PATH_SIZE},
    {changing<vek_rm_extra_separators>, OVERWRITTEN, VEK_PATH_SIZE},
    {changing<vorn_vek_nt2unix_path>, BACKSLASHES_CONVERTED, VEK_PATH_SIZE},
    {changing<vorn_vek_unix2nt_path>, SLASHES_CONVERTED, VEK_PATH_SIZE},
    {unchanging<vorn_vek_class2ext>, UNCHANGED, VEK_EXT_SIZE},
    {unchanging<vorn_vek_class2tbl>, UNCHANGED, VEK_TBL_DIR_SIZE},
    {unchanging<vorn_vek_ext2class>, UNCHANGED, VEK_CLASS_SIZE},
    {unchanging<vorn_vek_ext2tbl>, UNCHANGED, VEK_TBL_DIR_SIZE},
    {unchanging<vorn_vek_get_def_wri_tbl>, UNCHANGED, VEK_TBL_PATH_SIZE},
    {unchanging<vorn_vek_get_def_propfile>, UNCHANGED, VEK_PATH_SIZE},
    {unchanging<vorn_vek_get_def_testrig>, UNCHANGED, VEK_PATH_SIZE},
    {unchanging<vorn_vek_input2ext>, UNCHANGED, VEK_PATH_SIZE},
    {unchanging<vorn_vek_standardize_alias>, UNCHANGED, VEK_PATH_SIZE},
    {unchanging<_vek_getlongpath>, UNCHANGED, VEK_PATH_SIZE},
    {[](char *string) { return vek_ext2alias(string, 2); }, UNCHANGED, VEK_PATH_SIZE},
    {[](char *string) { return vorn_vek_ext2path(string, 2); }, UNCHANGED, VEK_TBL_PATH_SIZE},
    {[](char *string) { return vorn_vek_get_tbl_path(string, 2); }, UNCHANGED, VEK_TBL_PATH_SIZE},
    {[](char *string) { return vorn_vek_level2db(atoi(string)); }, UNCHANGED, VEK_DB_NAME_SIZE},
    {[](char *string) { return vorn_vek_add_extension(string, "dpr"); }, UNCHANGED, VEK_PATH_SIZE},
    {[](char *string) { return vorn_vek_add_extension("a", string); }, UNCHANGED, VEK_PATH_SIZE},
    {[](char *string) -> const char * { return vek_strrstr(string, "a"); }, UNCHANGED, 0},
    {vorn_vek_input2path, BACKSLASHES_CONVERTED, VEK_PATH_SIZE},
    {vorn_vek_input2file, BACKSLASHES_CONVERTED, VEK_PATH_SIZE},
    {vorn_vek_input2base, BACKSLASHES_CONVERTED, VEK_PATH_SIZE},
    {vek_input2tbl_and_file, BACKSLASHES_CONVERTED, VEK_PATH_SIZE},
    {vorn_vek_alias2path, OVERWRITTEN, VEK_TBL_PATH_SIZE},
    {vorn_vek_input2tblpth, BACKSLASHES_CONVERTED, VEK_TBL_PATH_SIZE},
    {vorn_vek_input2full, BACKSLASHES_CONVERTED, VEK_PATH_SIZE},
    {vorn_vek_expand2full, BACKSLASHES_CONVERTED, VEK_PATH_SIZE},
    {vorn_vek_path2alias, BACKSLASHES_CONVERTED, VEK_PATH_SIZE}};

static void check(const string_operation &operation, std::string_view input)
{
    CallerString string(input, operation.call == changing<vek_eval_str> ? VEK_PATH_SIZE : 0);
    const char *result = operation.call(string);
    if (operation.effect == UNCHANGED)
        string.expect_unchanged();
    if (operation.effect == BACKSLASHES_CONVERTED)
        string.expect_converted();
    if (operation.effect == SLASHES_CONVERTED)
        string.expect_converted('/', '\\');
    if (operation.size > 0 && !string.holds(result))
        checked(result, operation.size);
    EXPECT(checked(string, std::max<size_t>(input.size() + 1, VEK_PATH_SIZE)).size() <=
               input.size() ||
           operation.call == changing<vek_eval_str>);
}

static std::string full(const std::string &name)
{
    return std::string(checked(vorn_vek_input2full(CallerString(name))));
}

// Whether the path starts with the directory, but within a component.
static bool ends_inside(const char *directory, const std::string &path)
{
    size_t length = strlen(directory);
    return vek_strncasecmp(path.c_str(), directory, (int)length) == 0 && path[length] != '/';
}

// Whether the path is absolute, names a file and is not mistaken for one of a
// database with a similar name.  Paths with "\" do not count: a "\" after a newline
// is kept when a name is resolved, but converted when the resulting path is passed
// back.
static bool is_absolute_file_path(const std::string &path)
{
    if (path.find('\\') != path.npos)
        return false;
    if (path[0] != '/' || path.rfind('/') == 0 || path.back() == '/')
        return false;
    for (int level = 1; level <= db_count(); ++level) {
        const vek_db_rec *db = db_at(level);
        if (ends_inside(db->path, path))
            return false;
        for (int i = 0; i < db->tbl_count; ++i)
            if (ends_inside(db->tbls[i]->full_path, path))
                return false;
    }
    return true;
}

// The alias of a path must resolve to the path again, except for letter case, which
// is that of the records.
static void check_reverse_lookup(const std::string &name)
{
    std::string path = full(name);
    if (!is_absolute_file_path(path))
        return;
    std::string alias(checked(vorn_vek_path2alias(CallerString(path))));
    std::string back = full(alias);
    if (vek_strcasecmp(back.c_str(), path.c_str()) != 0)
        expect_same(path, back);
}

static void find(std::string_view input, const char *file_class)
{
    CallerString name(input), solver_name(input);
    char *found = vorn_vek_search_file(file_class, name, 1);
    name.expect_converted();
    int is_found = 2;
    char *solver_result = db_search(solver_name, file_class, &is_found);
    EXPECT(is_found == 0 || is_found == 1);
    if (*checked(found).data() != '\0') {
        EXPECT(vek_file_exists(found) == 1);
        EXPECT(solver_name.holds(solver_result) || strcmp(found, solver_result) == 0);
        free(found);
    }
    if (!solver_name.holds(solver_result) && *solver_result != '\0')
        free(solver_result);
}

void run(std::string_view input)
{
    for (const string_operation &operation : operations)
        check(operation, input);
    CallerString string(input);
    EXPECT(vek_strcasecmp(string, string) == 0 && vek_strncasecmp(string, "", 9) >= 0);
    EXPECT(vorn_vek_db2level(string) <= 4 && vek_product_name_is(string) <= 1);
    for (const char *file_class : {"damper", "road", "none"})
        find(input, file_class);
    check_reverse_lookup((char *)string);
    check_invariants_registries();
}
