// Commands that print what the session holds.

#include "commands.h"
#include "vek.h"

int show_databases(const command_options &options)
{
    vector<row> rows;
    const configuration files = options.origin ? next_session(options.session) : configuration();
    const string keys = string("level# name access path") + (options.origin ? " origin" : "");
    const char *chosen = vorn_vek_get_write_default();
    for (const string &name : database_names()) {
        const char *access = !vorn_vek_db_iswritable(name.c_str())  ? "read-only"
                             : chosen && equal_nocase(chosen, name) ? "writable, default"
                                                                    : "writable";
        const string level = std::to_string(rows.size() + 1);
        const string path = convert(vorn_vek_alias2path, name);
        const string origin = place_of(find_entry(files.databases, name));
        rows.push_back({keys, {level, name, access, path, origin}});
    }
    print_rows(rows);
    return 0;
}

int show_tables(const command_options &options)
{
    vector<row> rows;
    const configuration files = options.origin ? next_session(options.session) : configuration();
    const string keys = string("class directory extension") + (options.origin ? " origin" : "");
    for (const auto &[name, directory, where, extension] : session_tables())
        rows.push_back(
            {keys, {name, directory, extension, place_of(find_entry(files.tables, name))}});
    print_rows(rows);
    return complain(rows.empty() ? "there is no table" : "");
}

int show_defaults(const command_options &options)
{
    vector<row> rows;
    command_options chosen = options;
    const configuration files = next_session(options.session);
    const string keys = string("class test_rig property_file") +
                        (options.origin ? " test_rig_origin property_file_origin" : "");
    strings classes;
    for (const auto *entries : {&files.tables, &files.testrigs, &files.propfiles})
        for (const string &name : names_of(*entries))
            if (std::ranges::find(classes, name) == classes.end())
                classes.push_back(name);
    chosen.words = options.words.empty() ? classes : options.words;
    const int missing = answer_names(chosen, [&](const string &name) {
        const string rig = vorn_vek_get_def_testrig(name.c_str());
        const string file = vorn_vek_get_def_propfile(name.c_str());
        if (rig.empty() && file.empty() && std::ranges::find(classes, name) == classes.end())
            return !complain("there is no class '" + name + "'" + did_you_mean(name, classes));
        rows.push_back({keys,
                        {name, rig, file, place_of(find_entry(files.testrigs, name)),
                         place_of(find_entry(files.propfiles, name))}});
        return true;
    });
    print_rows(rows);
    return missing;
}

// The library prints "OS-environment detected:  NAME=value" and, in the next line, its effect.
int show_environment(const command_options &)
{
    const string mark = "OS-environment detected:  ";
    strings lines;
    output.collected = &lines;
    printenvars();
    output.collected = nullptr;
    for (size_t i = 0; i < lines.size(); ++i) {
        const size_t start = lines[i].find(mark) + mark.size(), equals = lines[i].find('=');
        const bool has_effect = i + 1 < lines.size() && lines[i + 1].starts_with("  ");
        if (!output.json)
            print_answer(lines[i]);
        else if (lines[i].find(mark) != string::npos)
            print_rows({{"name value effect",
                         {lines[i].substr(start, equals - start), lines[i].substr(equals + 1),
                          has_effect ? lines[i + 1].substr(2) : ""}}});
    }
    return 0;
}

int show_version(const command_options &options)
{
    const string build = vek_build_version();
    if (options.version || output.json)
        print_answer({"version", {build}}, "vekhost " + build);
    else
        vek_version();
    return 0;
}

// The candidates are those before the start, which may create a file or set variables.
int show_session(const command_options &options)
{
    if (options.why)
        print_rows(next_session(options.session).candidates);
    if (options.why && !output.json)
        print_answer("");
    const int code = start_session(options.session, false);
    const char *chosen = vorn_vek_get_write_default();
    print_facts(
        {"product display_name databases# default_writable_database code# result",
         {vek_product_name(), vek_product_string(), std::to_string(vorn_vek_get_number_of_veks()),
          chosen ? chosen : "", std::to_string(code), code == 0 ? "started" : "failed"}});
    return code;
}
