// The fifteen functions of the core library that this library calls.  They are bound
// by name when the process is loaded, whatever library provides them.

#pragma once

extern "C" {

// The user.  vc_str_print prints one entry, which may contain newlines or end in one.
// vc_alert shows a dialog and returns the number of the pressed button, 1 to 3.
void vc_str_print(const char *text);
int vc_alert(const char *kind, const char *message, const char *first, const char *second,
             const char *third, int default_button);

// Set a variable of the process environment.  Returns 0 on success.
int vc_putenv(const char *name, const char *value);

// Message settings.  The handle of the current defaults is requested again before each
// use.
int msg_get_gui_threshold();
void msg_set_gui_threshold(int threshold);
int default_current_defaults();
int dbt_get_int(int defaults, int id, int zero);
void dbt_set_int(int defaults, int id, int value, int zero);

// The loaded model.  A handle of 0 means none.  ac_get_string does not know the size of
// the buffer.
int ac_tavik_root();
void ac_lookup_begin(int root, int type);
int ac_lookup_object(int zero);
void ac_lookup_done();
int ac_lookup_by_name(int model, int type, const char *name);
void ac_get_string(int object, int attribute, int zero, char *buffer);

// Plug-ins.
void register_new_plugin_paths(const char *name);
}
