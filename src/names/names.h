// What the sources of this folder share beside vek.h.

#pragma once

#include "vek.h"

extern "C" {

// names/aliases.cpp.  Take a name apart.  `database` is what is looked up as a
// database and is not written for a file URL, for which *is_alias becomes 0;
// `standard` is what is compared with the aliases of tables, or the path of a
// file URL.  Both have VEK_PATH_SIZE bytes, and are empty for a text that is too
// long.
void vek_split_alias(const char *text, char *database, char *standard, int *is_alias);

// names/file_search.cpp.  The path itself if it opens for reading, else the
// empty text.
const char *vek_existing_or_empty(const char *path);

// The search of older releases: by base name and class, at each level behind
// the skipped ones.  A static buffer of its own, or the empty text.
const char *vek_search_levels(const char *file_class, char *name, int skipped);
}

// names/path_text.cpp.  The directory part of a path without "\", and where its
// file name begins; both are in the buffers of vorn_vek_input2path and
// vorn_vek_input2file as well.
const char *split_path(const char *path, char (&directory)[VEK_PATH_SIZE]);

// names/file_search.cpp.  The second place of a name in the database "shared":
// the product's own shared database.  False for any other name.
bool product_shared_name(char (&second)[VEK_PATH_SIZE], const char *name);
