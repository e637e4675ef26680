// How every line for the user leaves the library.

#pragma once

#include "vek.h"

#include <cstddef>

extern "C" {

// The shared message buffer: holds the latest report, and the line that a
// reader of configuration files is at.
extern char vek_message_buf[VEK_PATH_SIZE];

// Print "<tag>: <text>" as one entry with the host's settings set aside.
void vek_put_message(const char *text, const char *tag);
}

enum report_kind {
    REPORT_ERROR,
    REPORT_WARNING,
    REPORT_ABORT,
    REPORT_PLAIN // a line without a tag, through vc_str_print
};

#ifdef __GNUC__
#define REPORT_FORMAT(pos, first) __attribute__((format(printf, pos, first)))
#else
#define REPORT_FORMAT(pos, first)
#endif

// Format a report in the shared message buffer and send it.  A report that is
// longer than the buffer goes out whole; the buffer keeps its beginning.  The
// arguments may lie in the buffer.
void report(report_kind kind, const char *caller, const char *format, ...) REPORT_FORMAT(3, 4);

// The same in another buffer.
void report_in(char *buffer, size_t size, report_kind kind, const char *caller, const char *format,
               ...) REPORT_FORMAT(5, 6);

void report_malloc_failure(const char *caller);
