// Checks that hold for every operation of the library and every input.

#pragma once

#include "vek.h"

#include <memory>
#include <string>
#include <string_view>

// A string argument in a block of exactly the size that the library may use: that
// of the string, or VEK_PATH_SIZE bytes for an operation that expands in place.
class CallerString {
  public:
    explicit CallerString(std::string_view string, size_t min_size = 0);
    operator char *() const
    {
        return bytes.get();
    }
    void expect_unchanged() const;
    void expect_converted(char from = '\\', char to = '/') const; // in full, in part or not
    bool holds(const char *result) const
    {
        return result == bytes.get();
    }

  private:
    std::string before;
    std::unique_ptr<char[]> bytes;
};

// Fails unless the result ends within `size` bytes.
std::string_view checked(const char *result, size_t size = VEK_PATH_SIZE);

// Databases have unique names and the same tables in the same order, and no count
// exceeds its capacity.
void check_invariants_registries();
// The invariants that hold even after a table was appended to a single database or
// the number of databases was set to any value.
void check_invariants_records();
