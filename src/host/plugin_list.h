// The list of plug-ins in the loaded model.

#pragma once

#include <cstddef>

constexpr size_t plugin_list_size = 1024; // of the list, and so of a name in it

// The handle of the model's list; 0 if there is none.  Without a model, the list is
// looked up under handle 0, or not at all if `needs_model` is set.
int plugin_list_find(bool needs_model);

// Get the list: names separated by ":".  Names that extend past the first 1023
// characters are left out, with a warning.
void plugin_list_fetch(int handle, char (&list)[plugin_list_size]);

// Copy the next name from *list and advance *list.  False at the end.
bool plugin_list_next(const char **list, char (&name)[plugin_list_size]);
