// What the sources that write the private file share.

#pragma once

#include "vek.h"

#include <cstddef>
#include <cstdio>

extern "C" {

// config/private_sections.cpp.  Write one section to the open file `out`.  Under
// the tag "vorn_sav_cfg" it holds what is the user's in this session, under any
// other what a new file starts with.  `old` is the text that a save replaces.
void _vek_print_env_section(FILE *out, const char *tag, FILE *old);
void _vek_print_db_section(FILE *out, const char *tag);
void _vek_print_tbl_section(FILE *out, const char *tag);
void _vek_print_propfile_section(FILE *out, const char *tag);
void _vek_print_testrig_section(FILE *out, const char *tag);
}

// config/private_file.cpp.  Whether the tag asks for a save from the session.
bool is_save(const char *tag);

// config/private_sections.cpp.  The header and all sections.  False if the old
// text could not be read to its end.
bool write_all_sections(FILE *out, const char *tag, FILE *old);

// config/private_rewrite.cpp.  Write the old text with the statements that
// follow the session brought up to date.  Both files are open for bytes.  False
// if the old text could not be read to its end.
bool rewrite_text(FILE *out, FILE *old, const char *tag, const char *name);

// config/private_statements.cpp.  Write a statement from what the process holds
// now, with `end` behind it.  False, and nothing written, if the process has no
// value that the statement could hold.
bool write_environment(FILE *out, const char *variable, const char *end);
bool write_default(FILE *out, const char *end);
void write_database(FILE *out, const char *name, const char *end);
void write_order(FILE *out, const char *end);

// config/private_lines.cpp.  A line, or a piece of a longer one, byte by byte.
// A NUL byte ends the text for those who look for words, not for those who copy.
struct private_line {
    char text[1024 + 1];
    size_t length;
};
// Take the next piece of at most `limit` characters, up to 1022; "\r\n" counts as one.
// False at the end of the file.
bool take_line(private_line *line, FILE *file, size_t limit);
// The line's own end, or else `usual`.
const char *end_of(const private_line *line, const char *usual);
