// What holds for every operation of the library, whatever it is given.

#pragma once

#include "vek.h"

#include <memory>
#include <string>
#include <string_view>

// A text for the library, in exactly the bytes that it may count on: those of
// the text, or VEK_PATH_SIZE of them for an operation that expands in place.
class Given {
  public:
    explicit Given(std::string_view text, size_t least = 0);
    operator char *() const
    {
        return bytes.get();
    }
    void expect_unchanged() const;
    void expect_turned(char from = '\\', char to = '/') const; // or unchanged
    bool holds(const char *result) const
    {
        return result == bytes.get();
    }

  private:
    std::string before;
    std::unique_ptr<char[]> bytes;
};

// The text ends within the width.
std::string_view checked(const char *result, size_t width = VEK_PATH_SIZE);

// Databases have names of their own and the same tables in the same order, and
// no count exceeds its capacity.
void expect_sound_registries();
// A table may have been appended to one database alone, and the count of
// databases may be anything: only what stays true then.
void expect_sound_records();
