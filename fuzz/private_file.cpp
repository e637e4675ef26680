// Updates and saves of an arbitrary private file, and of a session's edits.

#include "records.h"
#include "support/checks.h"
#include "support/harness.h"

#include <algorithm>
#include <cstring>

static const char file[] = ".vorn.cfg";
static const char shared_cfg[] = "DATABASE vorn_shared shared.vek\n"
                                 "TABLE damper dampers.tbl dpr\n"
                                 "TABLE spring springs.tbl spr\n";

void prepare()
{
    set_env("A_B", "a value");
    set_env("BLANK", " ");
}

static void start(const char *search)
{
    begin_process();
    the_host.keeps_locations = true;
    set_env("KLV_VEK_SEARCH", search);
    vorn_vek_cfg_env_read("vorn");
    vorn_vek_set_write_default_no_cfg_update("vorn_shared"); // if the file has none
}

static std::string update(const char *tag)
{
    EXPECT(vorn_wrt_cfg(tag, "private") == 1);
    check_invariants_registries();
    return read_file(file);
}

// The lines that an update does not rewrite.
static std::string other_lines(const std::string &contents)
{
    std::string all;
    for (const std::string &line : split(contents, "\n")) {
        std::string words = line.substr(0, line.find('\0'));
        size_t start = std::min(words.find_first_not_of(" \t\r\v\f"), words.size());
        std::string keyword = words.substr(start, words.find_first_of(" \t\r\v\f", start) - start);
        bool is_known = false;
        for (const char *known : {"DATABASE_ORDER", "DEFAULT_WRITE_DB", "ENVIRONMENT"})
            is_known = is_known || vek_strcasecmp(keyword.c_str(), known) == 0;
        if (!is_known && !line.empty())
            all += line + "\n";
    }
    return all;
}

// Whether a line is so long that it is read in chunks.
static bool has_chunks(const std::string &contents)
{
    for (const std::string &line : split(contents, "\n"))
        if (line.size() > 250)
            return true;
    return false;
}

// Skipped if the input has a database at the path of the backup.
static void expect_backup(const std::string &contents)
{
    if (vorn_vek_db_exists(".vorn.cfq") == 0)
        expect_same(contents, read_file(".vorn.cfq"));
}

// A second update must change nothing.  Lines that an update does not rewrite must
// be kept.
static void update_twice(const std::string &old)
{
    std::string once = update("x");
    if (!has_chunks(old))
        expect_same(other_lines(old), other_lines(once));
    expect_backup(old);
    std::string twice = update("x");
    expect_same(once, twice);
    vorn_vek_db_add("added", "added.vek", 1);
    expect_backup(twice);
    vorn_vek_db_remove("added");
    vorn_vek_db_remove("private");
    check_invariants_registries();
}

static std::string user_records; // databases in order, and the default writable one
static bool can_be_saved;

// Sets `user_records` and `can_be_saved` from the registries.
static void collect_user_records()
{
    user_records = vorn_vek_get_write_default();
    can_be_saved = true;
    for (int level = 1; level <= db_count(); ++level) {
        if (db_at(level)->cfg_index != vek_private_cfg_index)
            continue;
        std::string path = db_at(level)->path;
        if (path.find_first_of(" \t\r\v\f") == 0)
            path.insert(0, "./"); // as a save writes it
        user_records += std::string("\n") + db_at(level)->name + " " + path;
        bool can_be_ordered = strchr(db_at(level)->name, ',') == nullptr;
        size_t length = strlen("DATABASE  ") + strlen(db_at(level)->name) + path.size();
        bool ends_in_space = path.find_last_not_of(" \t\r") + 1 < path.size(); // a guard follows
        can_be_saved = can_be_saved && can_be_ordered && length + ends_in_space <= 266;
    }
}

// The statements of the saved file without ENVIRONMENT lines.  A save that keeps
// such a line drops a carriage return at its end, after which the next save may
// rewrite the line.
static std::string saved_statements()
{
    std::string all;
    for (const std::string &line : split(read_file(file), "\n")) {
        if (line.starts_with("!") || vek_strncasecmp(line.c_str(), "ENVIRONMENT", 11) == 0)
            continue;
        EXPECT(line.size() <= 266);
        all += line + "\n";
    }
    return all;
}

static void save_and_read()
{
    EXPECT(vorn_sav_cfg() == 1);
    collect_user_records();
    std::string saved = saved_statements(), before = user_records;
    if (!can_be_saved)
        return;
    start("yes");
    collect_user_records();
    expect_same(before, user_records);
    EXPECT(vorn_sav_cfg() == 1);
    expect_same(saved, saved_statements());
}

static std::string class_defaults()
{
    std::string all;
    for (const char *name : {"damper", "Damper", "spring"})
        all += std::string(vorn_vek_get_def_propfile(name)) + " " + vorn_vek_get_def_testrig(name) +
               "\n";
    return all;
}

// The default writable database, and the user's databases sorted by name.
static std::string sorted_user_records()
{
    collect_user_records();
    std::vector<std::string> lines = split(user_records, "\n");
    std::sort(lines.begin() + 1, lines.end());
    std::string all;
    for (const std::string &line : lines)
        all += line + "\n";
    return all;
}

static std::string order_of_databases()
{
    std::string all;
    for (int level = 1; level <= db_count(); ++level)
        all += std::string(db_at(level)->name) + " ";
    return all;
}

// One edit of the session, chosen by three bytes.  Returns whether it was a save.
static bool edit(const char *bytes)
{
    static const char *const names[] = {"private", "a", "b", "c-d", "E.f", "[g]", "%s"};
    static const char *const paths[] = {"p", "q r", "$HOME/s", "t~u", "./v//"};
    static const char *const files[] = {"$HOME/x.dpr", "shared.vek/dampers.tbl/y.dpr"};
    const auto second = (unsigned char)bytes[1], third = (unsigned char)bytes[2];
    const char *name = names[second % std::size(names)];
    switch ((unsigned char)bytes[0] % 6) {
    case 0:
        vorn_vek_db_add(name, paths[third % std::size(paths)], third % 5);
        return false;
    case 1:
        vorn_vek_db_remove(name);
        return false;
    case 2:
        vorn_vek_db_reorder(name, 1 + third % 4);
        return false;
    case 3:
        vorn_vek_set_write_default(name);
        return false;
    case 4:
        vorn_vek_set_def_propfile(second % 2 == 0 ? "damper" : "Damper",
                                  CallerString(files[third % 2], VEK_PATH_SIZE));
        vorn_vek_set_def_testrig(third % 2 == 0 ? "damper" : "spring", name);
        return false;
    default:
        the_host.answer = 1; // without a backup: the input can have a directory of its name
        EXPECT(vorn_sav_cfg() == 1);
        return true;
    }
}

// The next session has the edits of the last one: the databases at once, and the defaults
// of classes and the order as a save left them.
static void edit_and_read(std::string_view input)
{
    write_file("x.dpr", "");
    write_file("shared.vek/dampers.tbl/y.dpr", "");
    write_file(file, "DATABASE private $HOME/private.vek\nDEFAULT_WRITE_DB private\n");
    begin_process();
    set_env("KLV_VEK_SEARCH", "yes");
    EXPECT(vorn_vek_cfg_env_read("vorn") == 0);
    std::string saved_defaults = class_defaults(), saved_order;
    for (size_t i = 0; i + 3 <= std::min(input.size(), (size_t)30); i += 3) {
        const bool is_saved = edit(input.data() + i);
        saved_defaults = is_saved ? class_defaults() : saved_defaults;
        saved_order = is_saved ? order_of_databases() : "";
    }
    const std::string records = sorted_user_records();
    begin_process();
    set_env("KLV_VEK_SEARCH", "yes");
    EXPECT(vorn_vek_cfg_env_read("vorn") == 0);
    expect_same(records, sorted_user_records());
    expect_same(saved_defaults, class_defaults());
    if (!saved_order.empty())
        expect_same(saved_order, order_of_databases());
}

void run(std::string_view input)
{
    write_file("vorn.cfg", shared_cfg);
    write_file(file, input);
    start("yes");
    if (!input.empty())
        update_twice(std::string(input));
    save_and_read();
    edit_and_read(input);
}
