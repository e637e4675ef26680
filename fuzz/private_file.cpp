// Updates and saves of an arbitrary private file.

#include "records.h"
#include "support/checks.h"
#include "support/world.h"

#include <algorithm>
#include <cstring>

static const char file[] = ".vorn.cfg";
static const char shared_cfg[] = "DATABASE vorn_shared shared.vek\n"
                                 "TABLE damper dampers.tbl dpr\n"
                                 "TABLE spring springs.tbl spr\n";

void prepare()
{
    set("A_B", "a value");
    set("BLANK", " ");
}

static void start(const char *search)
{
    begin_process();
    the_host.keeps_places = true;
    set("KLV_VEK_SEARCH", search);
    vorn_vek_cfg_env_read("vorn");
    vorn_vek_set_write_default_no_cfg_update("vorn_shared"); // if the file has none
}

static std::string update(const char *tag)
{
    EXPECT(vorn_wrt_cfg(tag, "private") == 1);
    expect_sound_registries();
    return get_file(file);
}

// The lines that an update does not know.
static std::string other_lines(const std::string &text)
{
    std::string all;
    for (const std::string &line : split(text, "\n")) {
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

// Whether a line is so long that it is taken in pieces.
static bool has_pieces(const std::string &text)
{
    for (const std::string &line : split(text, "\n"))
        if (line.size() > 250)
            return true;
    return false;
}

// A database of the input's may lie at the path of the backup.
static void expect_backup(const std::string &text)
{
    if (vorn_vek_db_exists(".vorn.cfq") == 0)
        expect_same(text, get_file(".vorn.cfq"));
}

// A second update finds nothing to change, and all lines stay that it does not
// know.
static void update_twice(const std::string &old)
{
    std::string once = update("x");
    if (!has_pieces(old))
        expect_same(other_lines(old), other_lines(once));
    expect_backup(old);
    std::string twice = update("x");
    expect_same(once, twice);
    vorn_vek_db_add("added", "added.vek", 1);
    expect_backup(twice);
    vorn_vek_db_remove("added");
    vorn_vek_db_remove("private");
    expect_sound_registries();
}

static std::string personal; // databases in order, and the default
static bool can_be_saved;

static void look()
{
    personal = vorn_vek_get_write_default();
    can_be_saved = true;
    for (int level = 1; level <= db_count(); ++level) {
        if (db_at(level)->cfg_index != vek_private_cfg_index)
            continue;
        std::string path = db_at(level)->path;
        if (path.find_first_of(" \t\r\v\f") == 0)
            path.insert(0, "./"); // as it is saved
        personal += std::string("\n") + db_at(level)->name + " " + path;
        bool can_be_ordered = strchr(db_at(level)->name, ',') == nullptr;
        size_t length = strlen("DATABASE  ") + strlen(db_at(level)->name) + path.size();
        bool ends_in_space = path.find_last_not_of(" \t\r") + 1 < path.size(); // and is guarded
        can_be_saved = can_be_saved && can_be_ordered && length + ends_in_space <= 266;
    }
}

// The statements of the saved file, but for ENVIRONMENT lines: one that is kept
// as it was has lost a carriage return at its end, and may be written anew then.
static std::string saved_text()
{
    std::string all;
    for (const std::string &line : split(get_file(file), "\n")) {
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
    look();
    std::string saved = saved_text(), before = personal;
    if (!can_be_saved)
        return;
    start("yes");
    look();
    expect_same(before, personal);
    EXPECT(vorn_sav_cfg() == 1);
    expect_same(saved, saved_text());
}

void run(std::string_view input)
{
    put_file("vorn.cfg", shared_cfg);
    put_file(file, input);
    start("yes");
    if (!input.empty())
        update_twice(std::string(input));
    save_and_read();
}
