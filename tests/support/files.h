// Files and directories of the tests.

#pragma once

#include <string>
#include <vector>

using Lines = std::vector<std::string>;

void make_dir(const std::string &path); // with its parents
void write_file(const std::string &path, const std::string &text = "");
std::string read_file(const std::string &path);
std::string read_text(const std::string &path); // in text mode: newlines are converted
Lines listing(const std::string &dir);          // its entries, sorted
