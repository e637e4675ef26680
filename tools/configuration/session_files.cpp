// The places where a session looks for its configuration files.

#include "statements.h"
#include "vek.h"

#include <unistd.h>

string upper_case(string text)
{
    vek_str_copy_to_upper_case(text.c_str(), text.data());
    return text;
}

string short_name(const string &product)
{
    const strings names =
        split("vorn VORN belthar BLTH skarn SKRN dunmoren DUN quorvalind QRVL", " ");
    const auto known = std::ranges::find(names, product);
    return known == names.end() ? "" : known[1];
}

const char HERE[] = "current directory", PLUGIN_DIRS[] = "KLV_USER_PLUGIN_DIR";

// A variable and what its value is continued with.
using places = vector<std::pair<string, strings>>;

// Returns "found", or why not.  A session goes on without a file that does not open: an error.
static string try_path(configuration &all, const string &path)
{
    std::error_code error;
    errno = 0;
    const bool is_short = path.size() < VEK_CFG_PATH_SIZE;
    const bool is_found = vek_file_exists(path.c_str()) && is_short;
    const bool is_missing = errno == 0 || errno == ENOENT || errno == ENOTDIR;
    const string answer = is_found ? "found" : is_short ? strerror(errno) : "longer than 266 bytes";
    if (is_found)
        all.found += (all.found.empty() ? "" : ", ") + path;
    else if (!is_missing || fs::exists(fs::symlink_status(path, error)))
        all.diagnostics.push_back({{path}, ERROR, "unreadable", answer});
    return answer;
}

// Adds the first file that is found.
static void look(configuration &all, vector<cfg_file> &files, cfg_role role, const string &kind,
                 const string &name, const places &places)
{
    const char *keys = "kind name variable answer path";
    for (const auto &[variable, endings] : places) {
        const char *value = variable == HERE ? "." : variable_value(all, variable);
        const bool is_set = value && (*value || kind != "site");
        const string list = is_set ? value : "";
        if (!is_set)
            all.candidates.push_back({keys, {kind, name, variable, "not set", ""}});
        for (const string &dir : variable == PLUGIN_DIRS ? split(list, ";") : strings{list})
            for (size_t i = 0; is_set && i < endings.size(); ++i) {
                const string path = dir + endings[i], answer = try_path(all, path);
                all.candidates.push_back({keys, {kind, name, variable, answer, path}});
                if (answer == "found")
                    return files.push_back({path, role});
            }
    }
}

static places private_places(const configuration &all)
{
    places list;
    const string own = short_name(all.product), variable = "KLV_" + own + "_PRIVATE_CFG";
    const char *home = variable_value(all, "HOME");
    if (!own.empty())
        list.push_back({variable, {""}});
    if (own.empty() || !variable_value(all, variable))
        list.push_back({home && *home ? "HOME" : HERE, {"/.vorn.cfg"}});
    return list;
}

static void read_files_of(configuration &all, const string &name, bool is_product)
{
    vector<cfg_file> files;
    const string file = "/" + name + ".cfg", both = "/" + name + file, own = upper_case(name);
    const string product = upper_case(all.product), other = short_name(all.product);
    const string private_dir = "KLV_" + (other.empty() ? product : other) + "_PRIVATE_DIR";
    places shared = {{"KLV_" + own, {file}}};
    if (!equal_nocase(name, all.product))
        shared.insert(shared.end(), {{HERE, {file}},
                                     {private_dir, {both, file}},
                                     {PLUGIN_DIRS, {both, file}},
                                     {"KLV_" + product + "_SITE", {both, file}}});
    shared.push_back({"topdir", {name + file}});
    const places site = {{"KLV_" + own + "_SITE", {file}}};
    const size_t faults = all.diagnostics.size();
    look(all, files, is_product ? CFG_SHARED : CFG_PLUGIN, "shared", name, shared);
    const bool has_shared = !files.empty(), has_fault = all.diagnostics.size() > faults;
    look(all, files, is_product ? CFG_SITE : CFG_PLUGIN, "site", name, site);
    if (is_product)
        look(all, files, CFG_PRIVATE, "private", name, private_places(all));
    if (has_shared)
        read_files(all, files);
    else if (!has_fault) // else it does not open
        all.diagnostics.push_back(
            {location(), ERROR, "no-shared-file", "there is no shared file '" + name + ".cfg'"});
}

configuration read_session(const string &product, const strings &plugins)
{
    configuration all;
    all.product = product;
    read_files_of(all, product, true);
    for (const string &plugin : plugins)
        read_files_of(all, plugin, false);
    finish(all);
    return all;
}

string current_directory_fault()
{
    char path[4096];
    const char *fault = !getcwd(path, sizeof path) ? "no longer exists"
                        : strlen(path) >= 260      ? "has a path of 260 characters or more"
                        : access(path, X_OK) != 0  ? "is not accessible"
                                                   : nullptr;
    return fault ? "the current directory " + (fault + string(", so no database is found")) : "";
}
