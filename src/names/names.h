// What the sources of this folder share besides vek.h.

#pragma once

#include "vek.h"

extern "C" {

// names/aliases.cpp.  Split a name.  `database` is what is looked up as a database;
// for a file URL it is not written, and *is_alias becomes 0, else 1.  `standard` is
// what is compared with the aliases of tables, or the path of a file URL.  Both have
// VEK_PATH_SIZE bytes.  Both become empty if the string is too long.
void vek_split_alias(const char *text, char *database, char *standard, int *is_alias);

// names/file_search.cpp.  Returns the path itself if it opens for reading, else the
// empty string.
const char *vek_existing_or_empty(const char *path);

// The search of older releases: by base name and class, at each level after the
// skipped ones.  Returns a path in a static buffer of its own, or the empty string.
const char *vek_search_levels(const char *file_class, char *name, int skipped);
}

// names/path_parts.cpp.  Copy the directory of a path, whose separators are all "/".
// Returns where its file name begins.  Leaves the buffers of vorn_vek_input2path and
// vorn_vek_input2file as those functions do: without a "/", the first has the whole path.
const char *split_path(const char *path, char (&directory)[VEK_PATH_SIZE]);

// names/file_search.cpp.  The name of the same file in the product's own shared
// database, for a name in the database "shared".  Returns false for any other name,
// and if the result is too long.
bool product_shared_name(char (&second)[VEK_PATH_SIZE], const char *name);
