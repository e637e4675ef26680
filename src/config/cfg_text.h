// The text of a configuration file, and its lines.

#pragma once

#include "text/builder.h"

#include <cstddef>

// The whole text is in memory, so that no file is open while the host is called:
// a child that it forks would move the file's position when it ends.
struct cfg_text {
    text_builder bytes;
    size_t pos;    // of the next line
    bool is_whole; // else the file could not be read to its end
};

// Load the text of a file.  False, with errno set, if it does not open or there is
// no memory for it.
bool load_text(cfg_text *text, const char *path);
void release_text(cfg_text *text);

enum line_form {
    LINE_TEXT, // without the carriage return that stands directly before the newline or the
               // end of the text
    LINE_BYTES // with it, byte by byte
};

// Copy the next line with its newline, or a chunk of at most `limit` characters of
// a longer one, into limit + 1 bytes, or limit + 2 as LINE_BYTES.  A carriage return
// directly before the newline or the end of the text does not count, so that lines
// come in the same chunks wherever the file was written.  Returns the number of
// bytes; 0 at the end.  A NUL byte ends the chunk for those who read it as a string.
size_t read_line_chunk(cfg_text *text, char *to, size_t limit, line_form form);
