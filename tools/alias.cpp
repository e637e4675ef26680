// The names of paths.

#include "commands.h"
#include "vek.h"

string clean_path(const string &path)
{
    std::error_code error;
    const fs::path dir = fs::absolute(path, error) / "";
    return dir.lexically_normal().parent_path().generic_string();
}

// The path of a database may be relative.
static string alias_of(string path)
{
    path = vorn_vek_nt2unix_path(path.data());
    const bool has_host = path.starts_with("file://localhost/");
    if (path.starts_with("file://"))
        path.erase(0, strlen(has_host ? "file://localhost" : "file://"));
    if (path.empty() || path.starts_with('<') || path.starts_with("klvds:"))
        return convert(vorn_vek_path2alias, path);
    const string alias = convert(vorn_vek_path2alias, clean_path(path));
    const string other = convert(vorn_vek_path2alias, fs::path(path).lexically_normal().string());
    return !alias.starts_with("klvds:") && other.starts_with("klvds:") ? other : alias;
}

int show_aliases(const command_options &options)
{
    return answer_names(options, [](const string &path) {
        const string alias = alias_of(path);
        print_answer({"path name", {path, alias}}, alias);
        return true;
    });
}
