// What the sources of this folder share besides vek.h.

#pragma once

#include "vek.h"

extern "C" {

// config/identity.cpp.  The path of the private file, in VEK_PATH_SIZE bytes; the
// empty string if it does not fit.
void vek_private_cfg_path(char *path);

// config/private/update.cpp.  Write the private file as the tag requires.  If the file
// is to be created and is not empty by then, it is left alone.  Returns 1 if it was
// written or exists, 0 otherwise.
int _vek_print_cfg_file(const char *tag, const char *path, const char *name);
}

// config/private/steps.cpp.  Report the safety copy of the private file that an update
// left because it was killed or could not restore the file.
void report_safety_copy(const char *path);

// config/identity.cpp.  The path of the private file, of any length: `start` followed
// by `end`.
struct private_path {
    const char *start;
    const char *end;
};
private_path private_path_parts();

// config/identity.cpp.  The value of the variable that names the user's directory for
// plug-in files of this product; null if it is not set.
const char *private_dir_value();

// config/identity.cpp.  The value of KLV_<NAME><suffix>, with the name in upper case;
// null if it is not set.
const char *name_variable_value(const char *name, const char *suffix);

// config/find_files.cpp.  Find the configuration file of a plug-in, in all directories
// but the one that KLV_<NAME> names.  `path` has VEK_PATH_SIZE bytes.  With
// `register_paths`, the host registers the plug-in's paths before the user's plug-in
// directories are searched.
bool find_plugin_file(char *path, const char *name, bool register_paths);

// config/cfg_index.cpp.  The configuration index of the next file that is read, in
// this start or a later one.
extern int vek_next_cfg_index;
// Store the path under that index and increment the index.  False, after reporting
// "malloc_failure", if memory runs out.
bool cfg_index_assign(const char *path);
