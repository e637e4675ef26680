// ENVIRONMENT statements, and variables in values.

#include "statements.h"
#include "vek.h"

#include <unistd.h>

static bool report_unset(const statement &it, const string &name)
{
    strings known = names_of(it.all.variables);
    for (char **variable = environ; *variable; ++variable)
        known.emplace_back(*variable, strcspn(*variable, "="));
    const bool has_end = name.find_last_of(" \t\"") != string::npos;
    const string hint =
        has_end ? "; its name ends at \"/\" or with the value" : did_you_mean(name, known, "$", "");
    fault_at(it, 2, "undefined-variable", "no variable '" + name + "'" + hint,
             unless_rejected(it.all, name, "variable"));
    it.all.diagnostics.back().variable = name;
    return false;
}

string expand(const statement &it, string value)
{
    int left = 64;
    for (size_t dollar; (dollar = value.find('$')) != string::npos;) {
        const size_t slash = std::min(value.find('/', dollar), value.size());
        const string name = value.substr(dollar + 1, slash - dollar - 1);
        const char *replacement = variable_value(it.all, name);
        if (!replacement && !report_unset(it, name))
            return {};
        value = value.substr(0, dollar) + replacement + value.substr(slash);
        if ((left-- == 0 || value.size() > VEK_PATH_SIZE - 2) &&
            !fault_at(it, 2, "too-long", "more than 266 characters or 64 variables, with $" + name))
            return {};
        value = vek_rm_extra_separators(value.data());
    }
    return value;
}

void apply_environment(const statement &it)
{
    const string &name = it.words[1].text, own = "KLV_" + upper_case(it.all.product);
    string value = it.text.substr(it.words[2].start, it.end - it.words[2].start);
    if (value.size() > 180 && !fault_at(it, 2, "too-long", "more than 180 characters"))
        return;
    const string early = "KLV_PRODUCT_NAME HOME topdir " + own + " " + own + "_SITE KLV_" +
                         short_name(it.all.product) + "_PRIVATE_CFG";
    if (it.role != CFG_PLUGIN && is_in(name, early))
        fault_at(it, 1, "late-variable", "it leads to these files: set it before", WARNING);
    value = expand(it, value);
    if (value.empty() && unless_rejected(it.all, name, "variable") == CONSEQUENCE)
        return;
    // Quotes that enclose the whole value are removed, then spaces at its end.
    if (value.starts_with('"') && value.ends_with('"'))
        value = value.size() < 3 ? "" : value.substr(1, value.size() - 2);
    value.erase(value.find_last_not_of(' ') + 1);
    it.all.variables.push_back({name, value, it.where});
}
