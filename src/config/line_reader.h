// Reading lines of configuration files.

#pragma once

#include <cstddef>
#include <cstdio>

enum line_form {
    LINE_TEXT, // without the carriage return that stands directly before the newline or the
               // end of the file
    LINE_BYTES // with it, byte by byte
};

// Read a line with its newline, or a chunk of at most `limit` characters of a
// longer one, into limit + 1 bytes, or limit + 2 as LINE_BYTES.  A carriage return directly before
// the newline or the end of the file does not count, so that lines come in the same chunks wherever
// the file was written.  Returns the number of bytes: 0 at the end of the file, and when it can't
// be read on, which ferror tells.  A NUL byte ends the chunk for those who read it as a string.
size_t read_line_chunk(FILE *file, char *to, size_t limit, line_form form);
