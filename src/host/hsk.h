// The fifteen operations of the core library that this one calls.  They are
// bound by name when the process is loaded, whoever provides them.

#pragma once

extern "C" {

// The user.  vc_str_print takes one entry, which may hold or end in line ends;
// vc_alert returns the number of the pressed button, 1 to 3.
void vc_str_print(const char *text);
int vc_alert(const char *kind, const char *message, const char *first, const char *second,
             const char *third, int default_button);

// The process environment.  Result: 0 done.
int vc_putenv(const char *name, const char *value);

// Message settings.  The handle of the current defaults is asked anew before
// each use.
int msg_get_gui_threshold();
void msg_set_gui_threshold(int threshold);
int default_current_defaults();
int dbt_get_int(int defaults, int id, int zero);
void dbt_set_int(int defaults, int id, int value, int zero);

// The loaded model.  A handle of 0 is none.  ac_get_string is not told how
// much room the buffer has.
int ac_tavik_root();
void ac_lookup_begin(int root, int type);
int ac_lookup_object(int zero);
void ac_lookup_done();
int ac_lookup_by_name(int model, int type, const char *name);
void ac_get_string(int object, int attribute, int zero, char *buffer);

// Plug-ins.
void register_new_plugin_paths(const char *name);
}
