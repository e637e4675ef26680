// All operations on one text, in a session of several databases.

#include "records.h"
#include "support/checks.h"
#include "support/world.h"

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
    set("KLV_VEK_SEARCH", "yes");
    set("KLV_VEK_EXPAND_PATH", "yes");
    set("SELF", "$SELF");
    set("RING", "$GNIR/a");
    set("GNIR", "$RING");
    set("LONG", std::string(200, 'x').c_str());
    put_file("vorn.cfg", shared_cfg);
    put_file(".vorn.cfg", private_cfg);
    vek_set_product_name();
    EXPECT(vorn_vek_init("vorn") == 0);
    for (const char *name : {"shared.vek/dampers.tbl/a.dpr", "private.vek/springs.tbl/b.spr",
                             "c.d/roads.tbl/c.r", "shared.vek/other.vek/d.x", "e"})
        put_file(name, name);
}

enum change { STAYS, IS_TURNED, IS_TURNED_BACK, IS_OVERWRITTEN };

struct text_operation {
    const char *(*call)(char *text);
    change what_happens;
    size_t width; // of the result, if that is not the caller's text
};

template <const char *(*call)(const char *)> static const char *keeping(char *text)
{
    return call(text);
}
template <char *(*call)(char *)> static const char *changing(char *text)
{
    return call(text);
}

static const text_operation operations[] = {
    {changing<vek_eval_str>, IS_OVERWRITTEN, VEK_PATH_SIZE},
    {changing<vek_rm_extra_separators>, IS_OVERWRITTEN, VEK_PATH_SIZE},
    {changing<vorn_vek_nt2unix_path>, IS_TURNED, VEK_PATH_SIZE},
    {changing<vorn_vek_unix2nt_path>, IS_TURNED_BACK, VEK_PATH_SIZE},
    {keeping<vorn_vek_class2ext>, STAYS, VEK_EXT_SIZE},
    {keeping<vorn_vek_class2tbl>, STAYS, VEK_TBL_DIR_SIZE},
    {keeping<vorn_vek_ext2class>, STAYS, VEK_CLASS_SIZE},
    {keeping<vorn_vek_ext2tbl>, STAYS, VEK_TBL_DIR_SIZE},
    {keeping<vorn_vek_get_def_wri_tbl>, STAYS, VEK_TBL_PATH_SIZE},
    {keeping<vorn_vek_get_def_propfile>, STAYS, VEK_PATH_SIZE},
    {keeping<vorn_vek_get_def_testrig>, STAYS, VEK_PATH_SIZE},
    {keeping<vorn_vek_input2ext>, STAYS, VEK_PATH_SIZE},
    {keeping<vorn_vek_standardize_alias>, STAYS, VEK_PATH_SIZE},
    {keeping<_vek_getlongpath>, STAYS, VEK_PATH_SIZE},
    {[](char *text) { return vek_ext2alias(text, 2); }, STAYS, VEK_PATH_SIZE},
    {[](char *text) { return vorn_vek_ext2path(text, 2); }, STAYS, VEK_TBL_PATH_SIZE},
    {[](char *text) { return vorn_vek_get_tbl_path(text, 2); }, STAYS, VEK_TBL_PATH_SIZE},
    {[](char *text) { return vorn_vek_level2db(atoi(text)); }, STAYS, VEK_DB_NAME_SIZE},
    {[](char *text) { return vorn_vek_add_extension(text, "dpr"); }, STAYS, VEK_PATH_SIZE},
    {[](char *text) { return vorn_vek_add_extension("a", text); }, STAYS, VEK_PATH_SIZE},
    {[](char *text) -> const char * { return vek_strrstr(text, "a"); }, STAYS, 0},
    {vorn_vek_input2path, IS_TURNED, VEK_PATH_SIZE},
    {vorn_vek_input2file, IS_TURNED, VEK_PATH_SIZE},
    {vorn_vek_input2base, IS_TURNED, VEK_PATH_SIZE},
    {vek_input2tbl_and_file, IS_TURNED, VEK_PATH_SIZE},
    {vorn_vek_alias2path, IS_OVERWRITTEN, VEK_TBL_PATH_SIZE},
    {vorn_vek_input2tblpth, IS_TURNED, VEK_TBL_PATH_SIZE},
    {vorn_vek_input2full, IS_TURNED, VEK_PATH_SIZE},
    {vorn_vek_expand2full, IS_TURNED, VEK_PATH_SIZE},
    {vorn_vek_path2alias, IS_TURNED, VEK_PATH_SIZE}};

static void check(const text_operation &operation, std::string_view input)
{
    Given text(input, operation.call == changing<vek_eval_str> ? VEK_PATH_SIZE : 0);
    const char *result = operation.call(text);
    if (operation.what_happens == STAYS)
        text.expect_unchanged();
    if (operation.what_happens == IS_TURNED)
        text.expect_turned();
    if (operation.what_happens == IS_TURNED_BACK)
        text.expect_turned('/', '\\');
    if (operation.width > 0 && !text.holds(result))
        checked(result, operation.width);
    EXPECT(checked(text, std::max<size_t>(input.size() + 1, VEK_PATH_SIZE)).size() <=
               input.size() ||
           operation.call == changing<vek_eval_str>);
}

static std::string full(const std::string &name)
{
    return std::string(checked(vorn_vek_input2full(Given(name))));
}

// Whether the directory begins the path in the middle of a name.
static bool ends_inside(const char *directory, const std::string &path)
{
    size_t length = strlen(directory);
    return vek_strncasecmp(path.c_str(), directory, (int)length) == 0 && path[length] != '/';
}

// A whole path of a file, which no database takes for its own by mistake.  Behind
// a line feed in a name "\" stays, and is turned when only the path comes back.
static bool is_file_path(const std::string &path)
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

// But for letter case, which is that of the records.
static void go_there_and_back(const std::string &name)
{
    std::string path = full(name);
    if (!is_file_path(path))
        return;
    std::string alias(checked(vorn_vek_path2alias(Given(path))));
    std::string back = full(alias);
    if (vek_strcasecmp(back.c_str(), path.c_str()) != 0)
        expect_same(path, back);
}

static void find(std::string_view input, const char *file_class)
{
    Given name(input), solver_name(input);
    char *found = vorn_vek_search_file(file_class, name, 1);
    name.expect_turned();
    int is_found = 2;
    char *also = db_search(solver_name, file_class, &is_found);
    EXPECT(is_found == 0 || is_found == 1);
    if (*checked(found).data() != '\0') {
        EXPECT(vek_file_exists(found) == 1);
        EXPECT(solver_name.holds(also) || strcmp(found, also) == 0);
        free(found);
    }
    if (!solver_name.holds(also) && *also != '\0')
        free(also);
}

void run(std::string_view input)
{
    for (const text_operation &operation : operations)
        check(operation, input);
    Given text(input);
    EXPECT(vek_strcasecmp(text, text) == 0 && vek_strncasecmp(text, "", 9) >= 0);
    EXPECT(vorn_vek_db2level(text) <= 4 && vek_product_name_is(text) <= 1);
    for (const char *file_class : {"damper", "road", "none"})
        find(input, file_class);
    go_there_and_back((char *)text);
    expect_sound_registries();
}
