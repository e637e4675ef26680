// Entries and names.

#include "configuration.h"
#include "vek.h"

const char *variable_value(const configuration &all, const string &name)
{
    const char *value = getenv(name.c_str());
    for (const entry &variable : all.variables)
        value = variable.name == name ? variable.value.c_str() : value;
    return value;
}

bool equal_nocase(const string &first, const string &second)
{
    return vek_strcasecmp(first.c_str(), second.c_str()) == 0;
}

const entry *find_entry(const vector<entry> &entries, const string &name, string entry::*key)
{
    for (const entry &known : entries)
        if (equal_nocase(known.*key, name))
            return &known;
    return nullptr;
}

strings names_of(const vector<entry> &entries, string entry::*key)
{
    strings names;
    std::ranges::transform(entries, std::back_inserter(names), key);
    return names;
}

string place_of(const entry *defined)
{
    const bool has_place = defined && !defined->where.file.empty();
    return has_place ? defined->where.file + ":" + std::to_string(defined->where.line) : "";
}

database_name split_name(const string &name)
{
    const bool is_url = name.starts_with("klvds://");
    const size_t start = is_url ? strlen("klvds://") : 1;
    const size_t end = std::min(name.find(is_url ? '/' : '>', start), name.size());
    if (!is_url && !name.starts_with('<'))
        return {};
    const string rest = name.substr(std::min(end + (is_url ? 0 : 1), name.size()));
    const size_t last = std::min(rest.rfind('/'), rest.size());
    const bool has_directory = rest.starts_with('/') && last > 1 && last < rest.size();
    return {true, name.substr(start, end - start), rest,
            has_directory ? rest.substr(1, last - 1) : "", rest.substr(last)};
}
