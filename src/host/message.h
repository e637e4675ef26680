// How the library prints: reports with a tag, and lines without one.

#pragma once

#include "vek.h"

#include <cstddef>

extern "C" {

// The shared message buffer.  It holds the latest report or line, and while a
// configuration file is read, its current line.
extern char vek_message_buf[VEK_PATH_SIZE];

// Print "<tag>: <text>" as one entry, whatever the host's message settings are.
void vek_put_message(const char *text, const char *tag);
}

enum report_kind { REPORT_ERROR, REPORT_WARNING, REPORT_ABORT };

#ifdef __GNUC__
#define REPORT_FORMAT(pos, first) __attribute__((format(printf, pos, first)))
#else
#define REPORT_FORMAT(pos, first)
#endif

// Format a report in the shared message buffer and print it with its tag.  A report
// that is longer than the buffer is printed whole, and truncated in the buffer.  The
// arguments may point into the buffer.
void report(report_kind kind, const char *caller, const char *format, ...) REPORT_FORMAT(3, 4);

// The same in another buffer.
void report_in(char *buffer, size_t size, report_kind kind, const char *caller, const char *format,
               ...) REPORT_FORMAT(5, 6);

// The same for a line without a tag.  The host's message settings apply to it.
void print_line(const char *format, ...) REPORT_FORMAT(1, 2);
void print_line_in(char *buffer, size_t size, const char *format, ...) REPORT_FORMAT(3, 4);

// Report that memory ran out.
void report_malloc_failure(const char *caller);
