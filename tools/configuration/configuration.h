// Configuration files as a session reads them, but without one and without changes on disk.

#pragma once

#include "../text.h"

enum cfg_role { CFG_SHARED, CFG_SITE, CFG_PRIVATE, CFG_PLUGIN };

struct cfg_file {
    string path;
    cfg_role role;
    int number = 0; // in the order of reading, from 1
    string text = "";
};

struct location {
    string file;      // empty: in no file
    int line = 0;     // 0: the file as a whole
    int column = 0;   // in bytes, from 1
    int cfg_line = 0; // as the library counts: each part of a long line
    int number = 0;   // of the file
};

enum severity { CONSEQUENCE, WARNING, ERROR }; // the consequence of another fault is not printed

struct diagnostic {
    location where;
    severity level;
    string code, text;
    string variable = ""; // that is not set, if that is the fault
};

// A database, a default of a class, a variable, or a table with its class and directory.
struct entry {
    string name, value;
    location where;
    string extension = ""; // of a table
};

struct configuration {
    string product, private_file;
    int file_count = 0;     // read so far
    bool is_whole = true;   // false: other files are read before these
    vector<row> candidates; // where a session looks for its files
    string found;           // those of these, with ", "
    vector<entry> databases, tables, propfiles, testrigs, variables;
    entry write_default;
    vector<entry> rejected; // first operands of statements with an error, and what these define
    vector<diagnostic> diagnostics;
};

// Reads the files that a new session would find, or the given ones in the order of a session.
configuration read_session(const string &product, const strings &plugins);
configuration read_configuration(const vector<cfg_file> &files, const string &product);

// The value that the statements read so far, or the process, give a variable; null if none.
const char *variable_value(const configuration &all, const string &name);
bool equal_nocase(const string &first, const string &second); // as the library compares
string place_of(const entry *defined);                        // "file:line"; empty if there is none

// The entry that has a name, or another key, or null; and the names or keys of all.
const entry *find_entry(const vector<entry> &entries, const string &name,
                        string entry::*key = &entry::name);
strings names_of(const vector<entry> &entries, string entry::*key = &entry::name);

// A name in a database, "<database>/directory/file" or "klvds://database/directory/file".
struct database_name {
    bool is_valid = false; // else there are no parts
    string database, rest;
    string directory, file; // parts of the rest; the file with the "/" before it
};
database_name split_name(const string &name);

// Why every database looks missing, if the current directory is gone or not usable; or empty.
string current_directory_fault();
