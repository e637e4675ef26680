// The contents of a configuration file, read line by line.

#pragma once

#include "text/builder.h"

#include <cstddef>

// The whole contents are in memory, so that no file is open while the host is called:
// if the host forks, the child shares the position of an open file and can move it.
struct cfg_text {
    text_builder bytes;
    size_t pos;    // of the next line
    bool is_whole; // false if there was a read error
};

// Load the contents of a file.  False, with errno set, if it does not open or memory
// runs out.  A read error only clears `is_whole`.
bool load_text(cfg_text *text, const char *path);
void release_text(cfg_text *text);

enum line_form {
    LINE_TEXT, // without a carriage return directly before a newline or the end of the text
    LINE_BYTES // every byte
};

// Copy the next line with its newline, or, if it is longer than `limit` characters, a
// chunk of that length.  `to` has limit + 1 bytes, or limit + 2 with LINE_BYTES.  A
// carriage return directly before a newline or the end of the text does not count
// towards the limit, so that both kinds of line endings lead to the same chunks.
// Returns the number of bytes, 0 at the end.  They may include NUL bytes, which end
// the chunk for callers that use it as a string.
size_t read_line_chunk(cfg_text *text, char *to, size_t limit, line_form form);

// Load a file for one of the readers of statements.  False, after a report, if it does
// not open.
bool cfg_open(cfg_text *text, const char *path, const char *caller);
// Release the contents.  False, after a report, if there was a read error.
bool cfg_close(cfg_text *text, const char *path, const char *caller);
