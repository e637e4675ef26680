// What the sources of this folder share beside vek.h.

#pragma once

#include "config/cfg_text.h"
#include "vek.h"

#include <cstdio>

extern "C" {

// config/identity.cpp.  `path` has VEK_PATH_SIZE bytes; it becomes empty if the
// private file's path does not fit.
void vek_private_cfg_path(char *path);

// config/private/update.cpp.  Write the private file in the way that the tag
// says.  A new file does not take the place of one that has text.  Returns 1 if it
// is written, or there already, and else 0.
int _vek_print_cfg_file(const char *tag, const char *path, const char *name);

// config/environment_reader.cpp.  Take the ENVIRONMENT statements of one file; `path`
// is expanded in place.
int _cfg_read_file_env(char *path);
}

// config/private/steps.cpp.  Report where the text of the private file is kept, if an
// update was killed or could not restore it.
void report_safety_copy(const char *path);

// config/identity.cpp.  The path of the private file, whole whatever its
// length: `start` and then `end`.
struct private_path {
    const char *start;
    const char *end;
};
private_path private_path_parts();

// The value of the variable that names the user's directory for plug-in files
// of this product; null if it is not set.
const char *private_dir_value();

// The value of KLV_<NAME><suffix> with the name in upper case; null if it is
// not set.
const char *name_variable_value(const char *name, const char *suffix);

// config/find_files.cpp.  Find the file of a name that is not the product's, but
// for the place that its own variable names.  `registers` has the host told of
// the plug-in before the user's plug-in directories are searched.
bool find_plugin_file(char *path, const char *name, bool register_paths);

// config/cfg_text.cpp.  Load a file for one of the two readers of its statements.
// False, with a report, if it does not open.
bool cfg_open(cfg_text *text, const char *path, const char *caller);
// False, with a report, if the file could not be read to its end.
bool cfg_close(cfg_text *text, const char *path, const char *caller);

// config/cfg_index.cpp.  The index that the next file read will get, over all
// starts.
extern int vek_next_cfg_index;
// Keep the path under that index and go on to the next.  False, with
// "malloc_failure" reported, if there is no memory to keep it.
bool cfg_index_assign(const char *path);
