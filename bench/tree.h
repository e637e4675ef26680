// The tree of databases that the benchmark runs on.

#pragma once

#include <string>
#include <vector>

// A file in one table of one database, with all the strings that the measures need.
struct sample {
    std::string file_class, ext, database;
    std::string alias, path;                 // of a file that exists
    std::string missing_alias, missing_path; // of one that does not
    std::vector<std::string> candidates;     // paths of the missing file, level by level
    std::string url;                         // the alias that the reverse lookup returns
    std::string statement;                   // a TABLE statement with its extension
    std::string mounted, directories;        // for peers: "database/table/file"; "first:second"
    int level;
};

struct tree {
    int databases, tables;
    std::string home;
    std::vector<std::string> names;         // of the databases
    std::vector<std::string> database_dirs; // one per level
    std::vector<std::string> table_dirs;    // of all databases
    std::vector<sample> samples;            // spread over databases and tables
};

// A new directory for a tree, in TMPDIR.
std::string temporary_directory();

// Create the tree in an existing directory, and set the environment variables to use it.
// The databases lie in that directory or in a subdirectory of it, such as "/share".
tree make_tree(const std::string &home, int databases, int tables,
               const std::string &subdirectory = "");
void remove_tree(const tree &made);

void remove_table_dirs(const tree &made);

// A string as the operations take it.  They do not change those of a sample.
inline char *text(const std::string &from)
{
    return const_cast<char *>(from.c_str());
}

// Search for a name and release the result.
void search(const sample &one, const std::string &name);

// Start a session in the tree, as a host does, without printing its lines.  Returns
// whether there was no error.
bool start_session();
