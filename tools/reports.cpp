// The library's reports.  It tells the tables of a session in no other way.

#include "commands.h"
#include "vek.h"

#include <fstream>
#include <sstream>
#include <unistd.h>

// Returns the text of the report on "databases" or "tables".  The library does not tell
// whether it wrote all of it; where it has not, there is no room for one more byte either.
static bool make_report(const string &what, string *text)
{
    std::error_code error;
    string path = fs::temp_directory_path(error).string() + "/vekhost-XXXXXX";
    const int file = error ? -1 : mkstemp(path.data());
    auto *report = what == "tables" ? vorn_vek_tbl_info : vorn_vek_db_info;
    close(file); // else it cannot be opened again on Windows
    const bool is_made = file >= 0 && report(path.c_str()) == 0 &&
                         std::ofstream(path, std::ios::app).put('\n').flush().good();
    const string reason = error ? error.message() : strerror(errno);
    complain(is_made ? "" : "a temporary file cannot be written: " + reason);
    std::ostringstream read;
    read << std::ifstream(path).rdbuf();
    *text = read.str().substr(0, read.str().size() - (is_made ? 1 : 0));
    unlink(path.c_str());
    return is_made;
}

vector<entry> session_tables()
{
    static vector<entry> tables; // which do not change while a command runs
    string text;
    if (tables.empty())
        make_report("tables", &text);
    for (const string &line : split(text, "\n")) {
        const strings words = split(line, " ");
        if (words.size() == 4 && words[0] == "Table")
            tables.push_back({words[1], words[2], {}, words[3]});
    }
    return tables;
}

int write_report(const command_options &options)
{
    string text;
    const string &path = options.words[1];
    if (!make_report(options.words[0], &text))
        return 1;
    std::ofstream file(path);
    const bool is_written = (file << text).flush().good();
    return complain(is_written ? "" : "'" + path + "' cannot be written: " + strerror(errno));
}

int create_database(const command_options &options)
{
    return vorn_cre_dat(options.words[0].c_str()) == 1 ? 0 : 1;
}
