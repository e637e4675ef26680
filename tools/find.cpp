// Finding files, what a search tries, and why it finds nothing.

#include "commands.h"
#include "vek.h"

static string search(const command_options &options, string name)
{
    int found = 1;
    char *block = options.session.solver
                      ? db_search(name.data(), options.file_class.c_str(), &found)
                      : vorn_vek_search_file(options.file_class.c_str(), name.data(), 1);
    const string path = found ? block : "";
    if (block != name.data() && *block)
        free(block);
    return path;
}

static string file_status(const string &path)
{
    errno = 0;
    if (vek_file_exists(path.c_str()))
        return "found";
    return errno == 0 ? "not a file" : strerror(errno);
}

static string path_at_level(const string &name, const string &file_class, int level)
{
    const char *cls = file_class.c_str();
    return string(vorn_vek_get_tbl_path(cls, level)) + "/" + convert(vorn_vek_input2base, name) +
           "." + vorn_vek_class2ext(cls);
}

// Adds a path that a search tries, unless it is among those from `first` on.
static void add_path(vector<row> &rows, size_t first, const string &name, const string &path)
{
    const string alias = convert(vorn_vek_path2alias, path);
    const database_name place = split_name(alias[0] == 'k' ? alias : "");
    for (size_t i = first; i < rows.size(); ++i)
        if (rows[i].values[4] == path || rows[i].values[3] == "found")
            return;
    rows.push_back({"name database table status path",
                    {name, place.database, place.directory, file_status(path), path}});
}

// A name in the database "shared" is also searched in "<product>_shared".
static void add_tried_paths(vector<row> &rows, const string &name, const string &file_class)
{
    const size_t first = rows.size();
    const string unix_name = convert(vorn_vek_nt2unix_path, name);
    add_path(rows, first, name, convert(vorn_vek_input2full, unix_name));
    const database_name place = split_name(unix_name);
    const string other = "<" + string(vek_product_name()) + "_shared>" + place.rest;
    if (place.database == "shared")
        add_path(rows, first, name, convert(vorn_vek_input2full, other));
    const int levels = environment("KLV_VEK_SEARCH") == "yes" ? vorn_vek_get_number_of_veks() : 0;
    for (int level = 1; level <= levels; ++level)
        add_path(rows, first, name, path_at_level(name, file_class, level));
}

// Adds the copies of a file at all levels, or what the search returns, if it is at none.
static void add_copies(vector<row> &rows, const string &name, const string &file_class,
                       const string &winner)
{
    const char *keys = "name level# database state path";
    bool is_listed = winner.empty();
    for (int level = 1; level <= vorn_vek_get_number_of_veks(); ++level) {
        const string path = path_at_level(name, file_class, level);
        const char *state = path == winner ? "wins" : winner.empty() ? "not searched" : "hidden";
        is_listed = is_listed || path == winner;
        if (vek_file_exists(path.c_str()))
            rows.push_back(
                {keys, {name, std::to_string(level), vorn_vek_level2db(level), state, path}});
    }
    if (!is_listed)
        rows.push_back({keys, {name, "", "", "wins", winner}});
}

string unknown_database(const string &name)
{
    strings names = database_names();
    const string shared = string(vek_product_name()) + "_shared";
    if (vorn_vek_db2level(shared.c_str()) > 0)
        names.insert(names.begin(), "shared");
    if (vorn_vek_db2level(name == "shared" ? shared.c_str() : name.c_str()) > 0)
        return "";
    return "there is no database '" + name + "'" + did_you_mean(name, names, "<", ">");
}

string unknown_in_tables(string entry::*key, const string &what, const string &name)
{
    const vector<entry> tables = session_tables();
    const string hint = did_you_mean(name, names_of(tables, key));
    const bool is_known = tables.empty() || find_entry(tables, name, key);
    return is_known ? "" : "no table has the " + what + " '" + name + "'" + hint;
}

static string wrong_file(const fs::path &path)
{
    strings files;
    std::error_code error;
    const string dir = path.has_parent_path() ? path.parent_path().string() : ".";
    for (const auto &file : fs::directory_iterator(dir, error))
        files.push_back(file.path().filename().string());
    std::ranges::sort(files);
    return path.string() + ": " + file_status(path.string()) +
           did_you_mean(path.filename().string(), files);
}

static string why_missing(const string &name, const string &file_class)
{
    const string unix_name = convert(vorn_vek_nt2unix_path, name);
    const auto [is_valid, database, rest, directory, file] = split_name(unix_name);
    if (name.empty())
        return "the name is empty";
    string reason = is_valid ? unknown_database(database) : "";
    if (reason.empty() && is_valid && rest.size() < 2)
        reason = "it names a database, not a file";
    if (reason.empty() && !directory.empty())
        reason = unknown_in_tables(&entry::value, "directory", directory);
    if (reason.empty() && !file_class.empty())
        reason = unknown_in_tables(&entry::name, "class", file_class);
    if (!reason.empty())
        return reason;
    const bool is_limited = !file_class.empty() && environment("KLV_VEK_SEARCH") != "yes";
    return wrong_file(convert(vorn_vek_input2full, unix_name)) +
           (is_limited ? " (no level is searched, as KLV_VEK_SEARCH is not \"yes\")" : "");
}

int find_files(const command_options &options)
{
    vector<row> rows;
    const int missing = answer_names(options, [&](const string &name) {
        const string path = search(options, name);
        if (options.why)
            add_tried_paths(rows, name, options.file_class);
        else if (options.all)
            add_copies(rows, name, options.file_class, path);
        else if (!path.empty())
            print_answer({"name path", {name, path}}, path);
        if (path.empty())
            complain(name + ": not found: " + why_missing(name, options.file_class));
        return !path.empty();
    });
    print_rows(rows);
    return missing;
}
