// Why a search finds a file or not, from the library's interface alone.

#include "commands.h"
#include "vek.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// A path that a search tries.
struct candidate {
    std::string path;
    std::string database; // empty: in no database
    std::string table;
};

// The library's functions write into their argument, so each gets a copy.
static std::string full_path(std::string name)
{
    return vorn_vek_input2full(name.data());
}

static candidate candidate_of_name(const std::string &name)
{
    candidate result = {full_path(name), "", ""};
    std::string path = result.path, scheme = "klvds://";
    std::string alias = vorn_vek_path2alias(path.data());
    if (alias.compare(0, scheme.size(), scheme) != 0)
        return result;
    size_t slash = alias.find('/', scheme.size()), last = alias.rfind('/');
    result.database = alias.substr(scheme.size(), slash - scheme.size());
    if (last > slash)
        result.table = alias.substr(slash + 1, last - slash - 1);
    return result;
}

// A name in the database "shared" is also searched in "<product>_shared".
static void add_product_database(std::vector<candidate> &list, const std::string &name)
{
    for (const char *prefix : {"<shared", "klvds://shared"}) {
        size_t length = strlen(prefix);
        if (name.compare(0, length, prefix) == 0 && (*prefix != '<' || name[length] == '>'))
            list.push_back(candidate_of_name(name.substr(0, length - strlen("shared")) +
                                             vek_product_name() + "_shared" + name.substr(length)));
    }
}

static candidate candidate_at_level(std::string name, const std::string &file_class, int level)
{
    const char *cls = file_class.c_str();
    std::string directory = vorn_vek_get_tbl_path(cls, level);
    std::string base = vorn_vek_input2base(name.data());
    return {directory + "/" + base + "." + vorn_vek_class2ext(cls), vorn_vek_level2db(level),
            vorn_vek_class2tbl(cls)};
}

static bool searches_levels()
{
    const char *setting = getenv("KLV_VEK_SEARCH");
    return setting && strcmp(setting, "yes") == 0;
}

static std::vector<candidate> candidates(std::string name, const std::string &file_class)
{
    name = vorn_vek_nt2unix_path(name.data());
    std::vector<candidate> list = {candidate_of_name(name)};
    add_product_database(list, name);
    for (int level = 1; searches_levels() && level <= vorn_vek_get_number_of_veks(); ++level)
        list.push_back(candidate_at_level(name, file_class, level));
    return list;
}

static std::string file_status(const std::string &path)
{
    errno = 0;
    if (vek_file_exists(path.c_str()))
        return "found";
    return errno == 0 ? "not a file" : strerror(errno);
}

static const char *or_dash(const std::string &string)
{
    return string.empty() ? "-" : string.c_str();
}

static bool explain_one(const std::string &name, const std::string &file_class)
{
    std::printf("%s\n", name.c_str());
    int number = 0;
    for (const candidate &tried : candidates(name, file_class)) {
        std::string status = file_status(tried.path);
        std::printf("  %2d  %-14s  %-14s  %-26s  %s\n", ++number, or_dash(tried.database),
                    or_dash(tried.table), status.c_str(), tried.path.c_str());
        if (status == "found")
            break;
    }
    std::string path = search(name, file_class);
    if (path.empty() && !searches_levels())
        std::printf("  The levels are not searched, as KLV_VEK_SEARCH is not \"yes\".\n");
    std::printf("  %s\n", path.empty() ? "not found" : path.c_str());
    return !path.empty();
}

int explain_search(const command_options &options)
{
    int missing = 0;
    for (const std::string &name : options.words)
        missing += explain_one(name, options.file_class) ? 0 : 1;
    return missing;
}

static bool show_copies(const std::string &name, const std::string &file_class)
{
    const char *format = "  %5s  %-14s  %-12s  %s\n";
    std::string winner = search(name, file_class);
    bool is_shown = winner.empty();
    std::printf("%s\n", name.c_str());
    for (int level = 1; level <= vorn_vek_get_number_of_veks(); ++level) {
        candidate tried = candidate_at_level(name, file_class, level);
        if (!vek_file_exists(tried.path.c_str()))
            continue;
        bool wins = tried.path == winner;
        is_shown = is_shown || wins;
        std::printf(format, std::to_string(level).c_str(), tried.database.c_str(),
                    wins             ? "wins"
                    : winner.empty() ? "not searched"
                                     : "hidden",
                    tried.path.c_str());
    }
    if (!is_shown)
        std::printf(format, "-", "-", "wins", winner.c_str());
    if (winner.empty())
        std::printf("  not found\n");
    return !winner.empty();
}

int show_all_copies(const command_options &options)
{
    int missing = 0;
    for (const std::string &name : options.words)
        missing += show_copies(name, options.file_class) ? 0 : 1;
    return missing;
}
