/* core.c - a minimal core library.  It prints to standard error and answers each dialog
   with its default button.  It has no message settings, no models and no plug-ins.  */

#define _POSIX_C_SOURCE 200112L /* for setenv */

#include <hsk.h>
#include <stdio.h>
#include <stdlib.h>

void vc_str_print(const char *text)
{
    fprintf(stderr, "%s\n", text);
}

int vc_alert(const char *kind, const char *message, const char *first, const char *second,
             const char *third, int default_button)
{
    const char *labels[] = {first, second, third};

    fprintf(stderr, "[%s] %s: %s\n", kind, message, labels[default_button - 1]);
    return default_button;
}

int vc_putenv(const char *name, const char *value)
{
    return setenv(name, value, 1);
}

/* No line is hidden from the user.  */
int msg_get_gui_threshold(void) { return 0; }
void msg_set_gui_threshold(int threshold) {}
int default_current_defaults(void) { return 0; }
int dbt_get_int(int defaults, int id, int zero) { return 0; }
void dbt_set_int(int defaults, int id, int value, int zero) {}

/* There is no model.  */
int ac_tavik_root(void) { return 0; }
void ac_lookup_begin(int root, int type) {}
int ac_lookup_object(int zero) { return 0; }
void ac_lookup_done(void) {}
int ac_lookup_by_name(int model, int type, const char *name) { return 0; }
void ac_get_string(int object, int attribute, int zero, char *buffer) {}

/* KLV_USER_PLUGIN_DIR has the directories of all plug-ins.  */
void register_new_plugin_paths(const char *name) {}
