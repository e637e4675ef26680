// A directory of its own for each test, which is the current directory and
// HOME, an environment without the library's variables, and what tests do there.

#pragma once

#include "config/config.h"
#include "host/message.h"
#include "names/names.h"
#include "registry/registry.h"

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
    std::string home; // the directory
};

void set_env(const std::string &name, const std::string &value); // in the environment
void make_dir(const std::string &path);                          // with its parents
void write_file(const std::string &path, const std::string &text = "");
std::string read_file(const std::string &path);
std::string read_text(const std::string &path); // with line ends as a program reads them
Lines listing(const std::string &dir);          // its entries, sorted
// A database in which nobody can make the probe file, root included, has it as a
// directory.
constexpr char probe_file[] = "/tmp_bedwvorn.txt";

// A text that the library may write to, in the bytes that it may count on.
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

std::string repeat_x(size_t count);           // that many "x"
std::string expand_repeats(std::string text); // with n times "x" for each [n]

// The rows of tests/tables/<name>.txt, one a line: cells with "|" between them
// and blanks around them that do not count, in which [n] stands for n times "x".
// A line that begins with "#" is a comment.
std::vector<Lines> table(const std::string &name);

// A table: rows with white space between them, each "cell=cell=...", in which
// [n] stands for n times "x".
std::vector<Lines> rows(const std::string &table);
// Expects an operation to give each row's second cell for the first.
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

// The cases of tests/tables/<name>.txt, where their parts are explained.
struct Case {
    std::string head, text, drain_output;
};
std::vector<Case> cases(const std::string &name);
// The variables set and the lines printed since the last time.
std::string drain_output();

// The result of a DATABASE or TABLE statement with these operands.
int add_database(const std::string &operands, int cfg_index = 0);
int add_table(const std::string &operands, int cfg_index = 0);

std::string names(); // of the databases, in order, with blanks between them
// Databases as "name path index: class index, ...".
Lines databases();

// A search, with the block of its result released.
std::string search(char *name, int level = 1, const std::string &file_class = "damper");

std::string reading(const std::string &path); // the line that says that a file is read

// KLV_PRODUCT_NAME and vek_set_product_name.
void set_product(const std::string &name);

// A first start of the product vorn from inst/vorn.cfg and HOME/.vorn.cfg.
extern const std::string shared_cfg;  // database vorn_shared, tables for damper and spring
extern const std::string private_cfg; // database private, which is the default for writing
int start_session(const std::string &shared = shared_cfg,
                  const std::string &private_file = private_cfg);
