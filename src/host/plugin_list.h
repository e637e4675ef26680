// The list of plug-ins that the loaded model names.

#pragma once

#include <cstddef>

constexpr size_t plugin_list_size = 1024; // of the list, and so of a name in it

// The handle of the model's list; 0 if it has none.  Without a model the list
// is looked up under handle 0, unless the caller needs a model.
int plugin_list_find(bool needs_model);

// The list itself: names separated by ":".  Names that do not end within the
// first 1023 characters are left out, with a warning.
void plugin_list_fetch(int handle, char (&list)[plugin_list_size]);

// Take the next name from *list and move *list behind it; false at the end.
bool plugin_list_next(const char **list, char (&name)[plugin_list_size]);
