// Strings, and the parts of the standard library that nearly all sources use.

#pragma once

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

using std::string, std::vector;
using strings = vector<string>;
namespace fs = std::filesystem;

// The keys are divided by spaces, and that of a number ends with "#".  A value may be empty;
// those without a key are left out.
struct row {
    string keys;
    strings values;
};

// "; did you mean <name>?" with the most similar name between the marks; empty if none is similar.
string did_you_mean(const string &name, const strings &known, const char *before = "'",
                    const char *after = "'");
// What a function of the library that may write into its argument returns for a copy of it.
string convert(auto *function, string text)
{
    return function(text.data());
}
string environment(const char *variable);                  // empty if it is not set
strings split(const string &text, const char *separators); // no part is empty
bool is_in(const string &word, const string &list);        // a word of those between spaces
