// How scripts write strings.  {x*300} is 300 times "x" and {0a} the byte 10; {home} is the
// current directory of the case, {tmp} the library's temporary directory; {pid} and {file} are
// numbers of the process and of a file.

#pragma once

#include "support/files.h"

extern std::string home_dir; // the value of {home}

// Returns the string that the notation stands for.
std::string decode(const std::string &text);
// Returns the notation of a string, the same for every run.
std::string encode(const std::string &text);
// Returns the notation itself in the form that encode gives.
std::string canonical(const std::string &notation);
// Returns the notation of an argument or result: in quotes if it is empty or has spaces.
std::string quoted(const std::string &text);

// Splits at a separator that is not in quotes.
Lines split_unquoted(const std::string &line, const std::string &separator);
// Splits a command into its words, and removes the quotes of a word and decodes it.
Lines words_of(const std::string &command);
std::string unquoted(const std::string &word);
// Replaces each occurrence of a string.
std::string replaced(std::string text, const std::string &old, const std::string &with);
Lines lines_of(const std::string &text);
