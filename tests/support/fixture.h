// The fixture of the tests, and functions that they share.  Each test has a temporary
// directory, which is its current directory and HOME, and an environment without the
// library's variables.

#pragma once

#include "config/config.h"
#include "host/message.h"
#include "names/names.h"
#include "registry/registry.h"

#include "files.h"
#include "recording_host.h"
#include "system.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

class TempDirTest : public testing::Test {
  protected:
    TempDirTest();
    ~TempDirTest() override;
    std::string home; // the temporary directory
};

void set_env(const std::string &name, const std::string &value); // in the environment
// The file that the library creates to probe a directory.  If it exists as a directory, the
// probe fails for every user, root included.
constexpr char probe_file[] = "/tmp_bedwvorn.txt";

// A writable string, in a buffer of the size that the library may rely on.
class Buffer {
  public:
    explicit Buffer(const std::string &text);
    operator char *() const
    {
        return bytes.get();
    }

  private:
    std::unique_ptr<char[]> bytes;
};

std::string repeat_x(size_t count);           // "x", `count` times
std::string expand_repeats(std::string text); // replaces each [n] by n times "x"

// Read the rows of tests/tables/<name>.txt, one per line.  Cells are separated by "|".
// Spaces around them are removed, and [n] stands for n times "x".  A line that begins
// with "#" is a comment.
std::vector<Lines> table(const std::string &name);

// Parse a table in a string: rows separated by white space, each "cell=cell=...".  [n]
// stands for n times "x".
std::vector<Lines> rows(const std::string &table);
// Expect an operation to return the second cell of each row for the first.
template <typename Operation, typename... More>
void check(Operation operation, const std::vector<Lines> &table, More... more)
{
    for (const Lines &row : table)
        EXPECT_EQ(operation(Buffer(row[0]), more...), row[1]) << row[0];
}
template <typename Operation, typename... More>
void check(Operation operation, const std::string &table, More... more)
{
    check(operation, rows(table), more...);
}

// Read the cases of tests/tables/<name>.txt.  A comment in that file explains their parts.
struct Case {
    std::string head, text, output;
};
std::vector<Case> cases(const std::string &name);
// Returns the variables set and the lines printed since the last call, and clears them.
std::string drain_output();

// Handle a DATABASE or TABLE statement with these operands and return its result.
int add_database(const std::string &operands, int cfg_index = 0);
int add_table(const std::string &operands, int cfg_index = 0);

std::string names(); // of the databases, in order, separated by spaces
// The databases as "name path index: class index, ...".
Lines databases();

// Search for a file and release the result.
std::string search(char *name, int level = 1, const std::string &file_class = "damper");

std::string reading(const std::string &path); // the message that a file is read

// Set KLV_PRODUCT_NAME and call vek_set_product_name.
void set_product(const std::string &name);

// Start the product vorn from inst/vorn.cfg and HOME/.vorn.cfg, as the first session.
extern const std::string shared_cfg;  // database vorn_shared, tables for damper and spring
extern const std::string private_cfg; // database private, the default writable database
int start_session(const std::string &shared = shared_cfg,
                  const std::string &private_file = private_cfg);
