// A sequence of calls of the interface.  Each line of the input is a call: the
// first letter chooses it, its arguments follow with "|" between them.

#include "support/checks.h"
#include "support/world.h"

#include <cstdlib>
#include <cstring>

// The arguments of a call, one after the other.  Behind the last they are empty.
struct Arguments {
    std::vector<std::string> texts;
    size_t next = 0;

    std::string text()
    {
        return next < texts.size() ? texts[next++] : "";
    }
    int number()
    {
        return atoi(text().c_str());
    }
};

// Whether the call before may have left the registries uneven, as documented.
static bool is_uneven;

template <int (*operation)(const char *)> static void ask(Arguments &given)
{
    Given text(given.text());
    operation(text);
    text.expect_unchanged();
}
template <int (*operation)(const char *, int)> static void read_statement(Arguments &given)
{
    Given text(given.text());
    int result = operation(text, given.number());
    EXPECT(0 <= result && result <= 6);
    text.expect_unchanged();
}
template <int (*operation)(char *)> static void on_file(Arguments &given)
{
    Given path(given.text());
    int result = operation(path);
    EXPECT(result == 0 || result == 1);
    path.expect_turned();
}
template <int (*operation)(char *, char *)> static void on_files(Arguments &given)
{
    Given from(given.text()), to(given.text());
    int result = operation(from, to);
    EXPECT(result == 0 || result == 1);
    from.expect_turned();
    to.expect_turned();
}

static void check_cfg_files(Arguments &given)
{
    Given shared("", VEK_PATH_SIZE), site("", VEK_PATH_SIZE), mine("", VEK_PATH_SIZE);
    int result = vek_chk_cfg_files(given.text().c_str(), shared, site, mine);
    EXPECT(0 <= result && result <= 2);
    for (char *path : {(char *)shared, (char *)site, (char *)mine})
        checked(path);
}

static void search(Arguments &given)
{
    Given name(given.text());
    char *found = vorn_vek_search_file(given.text().c_str(), name, given.number());
    name.expect_turned();
    if (*checked(found).data() != '\0')
        free(found);
}

static void search_as_solver(Arguments &given)
{
    Given name(given.text());
    int is_found = 2;
    char *found = db_search(name, given.text().c_str(), &is_found);
    EXPECT(is_found == 0 || is_found == 1);
    if (!name.holds(found) && *checked(found).data() != '\0')
        free(found);
}

static void translate(Arguments &given)
{
    std::string text = given.text();
    checked(vorn_vek_path2alias(Given(text)));
    checked(vorn_vek_input2full(Given(text)));
    Given alias(text);
    if (const char *path = vorn_vek_alias2path(alias); !alias.holds(path))
        checked(path);
    checked(vorn_vek_get_def_propfile(text.c_str()));
    checked(vorn_vek_get_def_testrig(text.c_str()));
    int level = given.number();
    checked(vorn_vek_get_tbl_path(text.c_str(), level), VEK_TBL_PATH_SIZE);
    checked(vek_ext2alias(text.c_str(), level));
    checked(vorn_vek_level2db(level), VEK_DB_NAME_SIZE);
}

static void set_defaults(Arguments &given)
{
    Given path(given.text(), VEK_PATH_SIZE);
    std::string file_class = given.text();
    vorn_vek_set_def_propfile(file_class.c_str(), path);
    vorn_vek_set_def_testrig(file_class.c_str(), path);
}

static void write_private_file(Arguments &given)
{
    std::string tag = given.text();
    int result = vorn_wrt_cfg(tag.c_str(), given.text().c_str());
    EXPECT(result == 0 || result == 1);
}

static void save(Arguments &given)
{
    the_host.answer = given.number();
    int result = vorn_sav_cfg();
    EXPECT(-1 <= result && result <= 1);
}

static void add_database(Arguments &given)
{
    std::string name = given.text(), path = given.text();
    vorn_vek_db_add(name.c_str(), path.c_str(), given.number());
}

static void reorder(Arguments &given)
{
    std::string name = given.text();
    vorn_vek_db_reorder(name.c_str(), given.number());
}

static void append_table(Arguments &given)
{
    is_uneven = true;
    std::string file_class = given.text(), dir = given.text(), ext = given.text();
    vek_tbl_add(given.number(), file_class.c_str(), dir.c_str(), ext.c_str(), 1);
}

static void copy_to_database(Arguments &given)
{
    Given source(given.text());
    vorn_vek_copy_file2db(source, given.text().c_str());
    source.expect_turned();
}

static void append_file(Arguments &given)
{
    std::string source = given.text();
    vorn_vek_append_file2file(source.c_str(), given.text().c_str());
}

static void set_modes(Arguments &given)
{
    int mode = given.number();
    mode % 2 == 0 ? vek_set_solver_mode(mode) : vek_set_interface_mode();
}

static void set_count(Arguments &given)
{
    is_uneven = true;
    vek_set_number_of_veks(given.number());
}

static void set_in_environment(Arguments &given)
{
    std::string name = given.text();
    if (!name.empty() && name.find('=') == name.npos)
        set(name.c_str(), given.text().c_str());
}

static void set_plugin_list(Arguments &given)
{
    the_host.plugin_list = given.text();
}

static void write_a_file(Arguments &given)
{
    put_file("a.cfg", given.text() + "\n" + given.text() + "\n" + given.text());
}

static void read_environment(Arguments &given)
{
    vek_env_read(Given(given.text(), VEK_PATH_SIZE));
}

static void make_tables(Arguments &given)
{
    EXPECT(vek_upd_vek_tbls(given.number()) <= 1);
}

static void fail_an_allocation(Arguments &given)
{
    fail_allocation(given.number());
}

static void (*const calls[])(Arguments &) = {
    add_database,                      // A
    on_file<vek_backup_file>,          // B
    on_files<vorn_vek_copy_file2file>, // C
    read_statement<vek_db_read>,       // D
    set_in_environment,                // E
    write_a_file,                      // F
    set_defaults,                      // G
    append_file,                       // H
    ask<vorn_vek_init>,                // I
    search_as_solver,                  // J
    check_cfg_files,                   // K
    set_plugin_list,                   // L
    set_modes,                         // M
    set_count,                         // N
    reorder,                           // O
    read_statement<vek_propfile_read>, // P
    ask<vek_db_setorder>,              // Q
    ask<vorn_vek_db_remove>,           // R
    ask<vorn_vek_cfg_env_read>,        // S
    read_statement<vek_tbl_read>,      // T
    make_tables,                       // U
    save,                              // V
    write_private_file,                // W
    fail_an_allocation,                // X
    append_table,                      // Y
    copy_to_database,                  // Z
    translate,                         // [
    search,                            // "\"
    on_file<vorn_vek_delete_file>,     // ]
    on_files<vorn_vek_rename_file>,    // ^
    read_statement<vek_cfg_read>,      // _
    read_environment,                  // `
    ask<vorn_vek_set_write_default>,   // a
    ask<vek_set_write_db>,             // b
    ask<vorn_vek_db_iswritable>,       // c
    ask<vorn_cre_dat>,                 // d
    ask<vorn_vek_db_info>,             // e
    ask<vorn_vek_tbl_info>,            // f
    read_statement<vek_testrig_read>,  // g
    ask<vek_file_exists>,              // h
    ask<vorn_vek_db_exists>,           // i
};

void prepare()
{
    set("KLV_USER_PLUGIN_DIR", home.c_str());
}

void run(std::string_view input)
{
    is_uneven = false;
    put_file("vorn.cfg", "DATABASE vorn_shared shared.vek\nTABLE damper dampers.tbl dpr\n");
    put_file("plug.cfg", "DATABASE plug_shared plug.vek\nTABLE spring springs.tbl spr\n");
    put_file(".vorn.cfg", "DATABASE private private.vek\nDEFAULT_WRITE_DB private\n");
    vek_set_product_name();
    for (const std::string &line : split(input, "\n")) {
        if (line.empty())
            continue;
        Arguments given = {split(line.substr(1), "|")};
        calls[(unsigned char)(line[0] - 'A') % std::size(calls)](given);
        is_uneven ? expect_sound_records() : expect_sound_registries();
    }
}
