// The lines of configuration files and the statements in them.

#pragma once

#include "configuration.h"

struct word {
    string text;
    size_t start; // in its line
};

// A line, or a part of one that is longer than the limit of its reader.
struct statement {
    configuration &all;
    cfg_role role;
    location where;     // of its first character
    string text;        // without its newline
    size_t length;      // with its newline
    size_t end;         // of the text before its comment
    vector<word> words; // the first is the keyword
};

// Reports a fault at a word, or with a higher index at the end of the line.  Returns false.
bool fault_at(const statement &it, size_t word_index, const char *code, const string &text,
              severity level = ERROR);
// The severity of a fault that may follow from the rejection of a statement that would define
// this name as a "database", "table" or "variable".
severity unless_rejected(const configuration &all, const string &name, const string &kind);

// Checks and applies a statement, if it is one for the reader of ENVIRONMENT or for the other.
void read_statement(const statement &it, bool is_environment);
void apply_environment(const statement &it); // of correct form

// Returns the value of word 2 with its variables replaced, or empty after a report.
string expand(const statement &it, string value);

// Reads files that follow those read before, and in the end reports what only the whole shows.
void read_files(configuration &all, const vector<cfg_file> &files);
void finish(configuration &all);

string upper_case(string text);
// The name that some products have in the variables for the user's own files, or else empty.
string short_name(const string &product);
