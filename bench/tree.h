// A tree of databases, in the shape that is measured.

#pragma once

#include <string>
#include <vector>

// A file in one table of one database, in all the texts that the measures need.
struct sample {
    std::string file_class, ext, database;
    std::string alias, path;                 // of a file that is there
    std::string missing_alias, missing_path; // of one that is not
    std::vector<std::string> candidates;     // the missing file's, level by level
    std::string url;                         // the alias that its path leads back to
    std::string statement;                   // a TABLE statement of its extension
    std::string mounted, directories;        // for peers: "database/table/file"; "first:second"
    int level;
};

struct tree {
    int databases, tables;
    std::string home;
    std::vector<std::string> names;         // of the databases
    std::vector<std::string> database_dirs; // one a level
    std::vector<std::string> table_dirs;    // of all databases
    std::vector<sample> samples;            // spread over databases and tables
};

// A new directory for a tree, in TMPDIR.
std::string temporary_directory();

// Make the tree in a directory that exists, and point the environment at it.  The
// databases lie there, too, or in a subdirectory of it, such as "/share".
tree make_tree(const std::string &home, int databases, int tables,
               const std::string &subdirectory = "");
void remove_tree(const tree &made);

void remove_table_dirs(const tree &made);

// As the operations take a text.
inline char *text(const std::string &from)
{
    return const_cast<char *>(from.c_str());
}

// A search for a name; the block of its result is released.
void search(const sample &one, const std::string &name);

// Whether the host's entry starts a session in the tree without an error.  Its
// lines are not shown.
bool start_session();
