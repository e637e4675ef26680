// A sequence of calls of the interface.  Each line of the input is a call: the
// first character selects the function, and its arguments follow, separated by
// "|".

#include "support/checks.h"
#include "support/harness.h"

#include <cstdlib>
#include <cstring>

// The arguments of a call, in order.  After the last they are empty.
struct Arguments {
    std::vector<std::string> strings;
    size_t next = 0;

    std::string string()
    {
        return next < strings.size() ? strings[next++] : "";
    }
    int number()
    {
        return atoi(string().c_str());
    }
};

// Whether a call may have left databases with different tables, as documented.
static bool tables_may_differ;

template <int (*operation)(const char *)> static void call_with_string(Arguments &args)
{
    CallerString string(args.string());
    operation(string);
    string.expect_unchanged();
}
template <int (*operation)(const char *, int)> static void read_statement(Arguments &args)
{
    CallerString statement(args.string());
    int result = operation(statement, args.number());
    EXPECT(0 <= result && result <= 6);
    statement.expect_unchanged();
}
template <int (*operation)(char *)> static void on_file(Arguments &args)
{
    CallerString path(args.string());
    int result = operation(path);
    EXPECT(result == 0 || result == 1);
    path.expect_converted();
}
template <int (*operation)(char *, char *)> static void on_files(Arguments &args)
{
    CallerString from(args.string()), to(args.string());
    int result = operation(from, to);
    EXPECT(result == 0 || result == 1);
    from.expect_converted();
    to.expect_converted();
}

static void check_cfg_files(Arguments &args)
{
    CallerString shared("", VEK_PATH_SIZE), site("", VEK_PATH_SIZE),
        private_file("", VEK_PATH_SIZE);
    int result = vek_chk_cfg_files(args.string().c_str(), shared, site, private_file);
    EXPECT(0 <= result && result <= 2);
    for (char *path : {(char *)shared, (char *)site, (char *)private_file})
        checked(path);
}

static void search(Arguments &args)
{
    CallerString name(args.string());
    char *found = vorn_vek_search_file(args.string().c_str(), name, args.number());
    name.expect_converted();
    if (*checked(found).data() != '\0')
        free(found);
}

static void search_as_solver(Arguments &args)
{
    CallerString name(args.string());
    int is_found = 2;
    char *found = db_search(name, args.string().c_str(), &is_found);
    EXPECT(is_found == 0 || is_found == 1);
    if (!name.holds(found) && *checked(found).data() != '\0')
        free(found);
}

static void translate(Arguments &args)
{
    std::string string = args.string();
    checked(vorn_vek_path2alias(CallerString(string)));
    checked(vorn_vek_input2full(CallerString(string)));
    CallerString alias(string);
    if (const char *path = vorn_vek_alias2path(alias); !alias.holds(path))
        checked(path);
    checked(vorn_vek_get_def_propfile(string.c_str()));
    checked(vorn_vek_get_def_testrig(string.c_str()));
    int level = args.number();
    checked(vorn_vek_get_tbl_path(string.c_str(), level), VEK_TBL_PATH_SIZE);
    checked(vek_ext2alias(string.c_str(), level));
    checked(vorn_vek_level2db(level), VEK_DB_NAME_SIZE);
}

static void set_defaults(Arguments &args)
{
    CallerString path(args.string(), VEK_PATH_SIZE);
    std::string file_class = args.string();
    vorn_vek_set_def_propfile(file_class.c_str(), path);
    vorn_vek_set_def_testrig(file_class.c_str(), path);
}

static void write_private_file(Arguments &args)
{
    std::string tag = args.string();
    int result = vorn_wrt_cfg(tag.c_str(), args.string().c_str());
    EXPECT(result == 0 || result == 1);
}

static void save(Arguments &args)
{
    the_host.answer = args.number();
    int result = vorn_sav_cfg();
    EXPECT(-1 <= result && result <= 1);
}

static void add_database(Arguments &args)
{
    std::string name = args.string(), path = args.string();
    vorn_vek_db_add(name.c_str(), path.c_str(), args.number());
}

static void reorder(Arguments &args)
{
    std::string name = args.string();
    vorn_vek_db_reorder(name.c_str(), args.number());
}

static void append_table(Arguments &args)
{
    tables_may_differ = true;
    std::string file_class = args.string(), dir = args.string(), ext = args.string();
    vek_tbl_add(args.number(), file_class.c_str(), dir.c_str(), ext.c_str(), 1);
}

static void copy_to_database(Arguments &args)
{
    CallerString source(args.string());
    vorn_vek_copy_file2db(source, args.string().c_str());
    source.expect_converted();
}

static void append_file(Arguments &args)
{
    std::string source = args.string();
    vorn_vek_append_file2file(source.c_str(), args.string().c_str());
}

static void set_modes(Arguments &args)
{
    int mode = args.number();
    mode % 2 == 0 ? vek_set_solver_mode(mode) : vek_set_interface_mode();
}

static void set_count(Arguments &args)
{
    tables_may_differ = true;
    vek_set_number_of_veks(args.number());
}

static void set_in_environment(Arguments &args)
{
    std::string name = args.string();
    if (!name.empty() && name.find('=') == name.npos)
        set_env(name.c_str(), args.string().c_str());
}

static void set_plugin_list(Arguments &args)
{
    the_host.plugin_list = args.string();
}

static void write_a_file(Arguments &args)
{
    write_file("a.cfg", args.string() + "\n" + args.string() + "\n" + args.string());
}

static void read_environment(Arguments &args)
{
    vek_env_read(CallerString(args.string(), VEK_PATH_SIZE));
}

static void create_table_dirs(Arguments &args)
{
    EXPECT(vek_upd_vek_tbls(args.number()) <= 1);
}

static void fail_an_allocation(Arguments &args)
{
    fail_allocation(args.number());
}

static void (*const calls[])(Arguments &) = {
    add_database,                                 // A
    on_file<vek_backup_file>,                     // B
    on_files<vorn_vek_copy_file2file>,            // C
    read_statement<vek_db_read>,                  // D
    set_in_environment,                           // E
    write_a_file,                                 // F
    set_defaults,                                 // G
    append_file,                                  // H
    call_with_string<vorn_vek_init>,              // I
    search_as_solver,                             // J
    check_cfg_files,                              // K
    set_plugin_list,                              // L
    set_modes,                                    // M
    set_count,                                    // N
    reorder,                                      // O
    read_statement<vek_propfile_read>,            // P
    call_with_string<vek_db_setorder>,            // Q
    call_with_string<vorn_vek_db_remove>,         // R
    call_with_string<vorn_vek_cfg_env_read>,      // S
    read_statement<vek_tbl_read>,                 // T
    create_table_dirs,                            // U
    save,                                         // V
    write_private_file,                           // W
    fail_an_allocation,                           // X
    append_table,                                 // Y
    copy_to_database,                             // Z
    translate,                                    // [
    search,                                       // "\"
    on_file<vorn_vek_delete_file>,                // ]
    on_files<vorn_vek_rename_file>,               // ^
    read_statement<vek_cfg_read>,                 // _
    read_environment,                             // `
    call_with_string<vorn_vek_set_write_default>, // a
    call_with_string<vek_set_write_db>,           // b
    call_with_string<vorn_vek_db_iswritable>,     // c
    call_with_string<vorn_cre_dat>,               // d
    call_with_string<vorn_vek_db_info>,           // e
    call_with_string<vorn_vek_tbl_info>,          // f
    read_statement<vek_testrig_read>,             // g
    call_with_string<vek_file_exists>,            // h
    call_with_string<vorn_vek_db_exists>,         // i
};

void prepare()
{
    set_env("KLV_USER_PLUGIN_DIR", home.c_str());
}

void run(std::string_view input)
{
    tables_may_differ = false;
    write_file("vorn.cfg", "DATABASE vorn_shared shared.vek\nTABLE damper dampers.tbl dpr\n");
    write_file("plug.cfg", "DATABASE plug_shared plug.vek\nTABLE spring springs.tbl spr\n");
    write_file(".vorn.cfg", "DATABASE private private.vek\nDEFAULT_WRITE_DB private\n");
    vek_set_product_name();
    for (const std::string &line : split(input, "\n")) {
        if (line.empty())
            continue;
        Arguments args = {split(line.substr(1), "|")};
        calls[(unsigned char)(line[0] - 'A') % std::size(calls)](args);
        tables_may_differ ? check_invariants_records() : check_invariants_registries();
    }
}
