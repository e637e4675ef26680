/* hsk.h - the fifteen functions that the library needs from its host.

   The core library of a program defines them, and the file-location library
   calls them.  vek.h declares the opposite direction, what the host calls.  The
   names are bound when the process is loaded, whichever file provides them.  On
   Windows this file is hsk.dll, whose sources are compiled with HSK_BUILD.

   These rules hold for every function.

   Calls      All calls come from within an operation of vek.h, in the thread
              that has called it.
   Reentry    A function does not call an operation of vek.h.
   Returning  A function returns to the library.  No exception and no longjmp
              leaves it.
   Strings    A string argument is never null and ends with a NUL.  It is valid
              during the call only: copy it to keep it.  Its length is not
              limited unless the entry says so.
   Handles    A handle is a number that the core library chooses.  0 means that
              there is no such object.
   Zero       An argument with the name `zero` is always 0.
   Minimum    An entry with "Minimum" describes the least that a function can
              do, and what is lost with it.  */

#ifndef HSK_H
#define HSK_H

#define HSK_STRING_SIZE 65536       /* the buffer of ac_get_string, including the NUL */
#define HSK_FIRST_SETTING 309       /* the ids of two settings */
#define HSK_SECOND_SETTING 310      /* see dbt_set_int */
#define HSK_SETTING_SHOWN 2         /* their value that shows a report */
#define HSK_TYPE_MODEL 4            /* the type of a model */
#define HSK_TYPE_STRING 66          /* the type of a string in a model */
#define HSK_ATTRIBUTE_STRING 518    /* the value of a string in a model */
#define HSK_LIST_NAME "plugin_list" /* the name of a model's list of plug-ins */

#if defined _WIN32 && defined HSK_BUILD
#define HSK_CORE __declspec(dllexport)
#elif defined __GNUC__ && !defined _WIN32
#define HSK_CORE __attribute__((visibility("default")))
#else
#define HSK_CORE
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Core library: the user -------------------------------------------- */

/* Print one entry for the user.

   Parameters  text  One line or several.  It may be empty, which is an empty
                     line, and it may end in a newline.  A report begins with
                     "ERROR: ", "WARNING: " or "ABORT: ".
   Called      By each operation that prints.
   Minimum     Do nothing.  Then the user does not learn why an operation
               failed.  */
HSK_CORE void vc_str_print(const char *text);

/* Show a dialog and return the number of the button that the user chose.

   Parameters  kind            "alert" for a question, "error" for a failure.
               message         May contain newlines.
               first           The label of button 1.  An empty label stands for
                               a button that is not shown, here and below.
               second          The label of button 2.
               third           The label of button 3.
               default_button  1, 2 or 3: the button for a user who just
                               confirms.
   Returns     1, 2 or 3.  After any other number vorn_sav_cfg writes nothing.
   Called      By vorn_sav_cfg ("Overwrite", "Backup" and "Cancel"), and by a
               start of a product session without a default writable database
               ("Exit The Session" alone), which ignores the result.
   Minimum     Return `default_button`.  Then a save always makes a backup and
               never asks.  */
HSK_CORE int vc_alert(const char *kind, const char *message, const char *first, const char *second,
                      const char *third, int default_button);

/* ---- Core library: the environment ------------------------------------- */

/* Set a variable of the process environment.

   The library reads variables with getenv, at each use.  So the variable has to
   be in the environment of the C library when the function returns.

   Parameters  name   At most 60 characters.
               value  At most 267 characters.  It may be empty: the variable is
                      then set to the empty string (on Windows it is unset).
   Returns     0 if the variable is set.  vek_env_read returns the number for the last
               statement of its file, and a start reports one that is not 0.
   Called      For each ENVIRONMENT statement of a configuration file, and by
               vek_start of the Fortran module.
   Minimum     None: what configuration files define by variables would have no
               value.  */
HSK_CORE int vc_putenv(const char *name, const char *value);

/* ---- Core library: message settings ------------------------------------

   A host can have settings by which it hides lines from the user.  Reports have
   to be shown all the same.  For each report the library reads the threshold and
   the two settings, sets them to show everything, calls vc_str_print, and
   restores them.  Other lines are printed with the settings as they are.

   A host that shows all lines needs none of these five functions: the setters
   can do nothing, and the others return 0.  */

/* Return or set the threshold below which lines are hidden.

   Parameters  threshold  0 to hide no lines, or an earlier result of
                          msg_get_gui_threshold.
   Called      For each report, as described above.
   Minimum     Return 0, or do nothing.  Then a threshold of the host's can hide
               reports.  */
HSK_CORE int msg_get_gui_threshold(void);
HSK_CORE void msg_set_gui_threshold(int threshold);

/* Return the handle of the settings in force.

   Returns     A handle that the library passes to the next call of dbt_get_int
               or dbt_set_int, and does not keep.
   Called      Before each call of dbt_get_int and dbt_set_int.
   Minimum     Return 0, if these two ignore it.  */
HSK_CORE int default_current_defaults(void);

/* Return or set an integer setting.

   Parameters  defaults  The result of default_current_defaults.
               id        HSK_FIRST_SETTING or HSK_SECOND_SETTING.
               value     HSK_SETTING_SHOWN, or an earlier result of dbt_get_int.
   Called      For each report, as described above.
   Minimum     Return 0, or do nothing.  Then the two settings can hide
               reports.  */
HSK_CORE int dbt_get_int(int defaults, int id, int zero);
HSK_CORE void dbt_set_int(int defaults, int id, int value, int zero);

/* ---- Core library: the loaded model ------------------------------------

   In a solver run the library reads one string of the loaded model, which has the
   names of the product and its plug-ins with ":" between them.  It calls
   ac_tavik_root, ac_lookup_begin, ac_lookup_object, ac_lookup_done,
   ac_lookup_by_name and ac_get_string in this order, each once.

   F2C_VORN_VEK_CFG_ENV_READ does this, and the first db_search or F2C_DB_SEARCH
   unless interface mode is on.  A product session calls none of the six.

   A host without models returns 0 from the four functions with a result, and its
   other two do nothing.  Then a solver run starts only the products that
   db_search starts for a model without the list.  */

/* Return the handle of the object that holds all models.

   Called      In a solver run, as described above.
   Minimum     Return 0.  */
HSK_CORE int ac_tavik_root(void);

/* Begin or end the enumeration of the objects of one type below an object.

   The library enumerates only models, and one enumeration ends before the next
   begins.

   Parameters  root  The result of ac_tavik_root.
               type  HSK_TYPE_MODEL.
   Called      In a solver run, as described above.
   Minimum     Do nothing.  */
HSK_CORE void ac_lookup_begin(int root, int type);
HSK_CORE void ac_lookup_done(void);

/* Return the next object of the enumeration.

   The library asks for the first one only.

   Returns     The handle of the loaded model; 0 if there is none.
   Called      In a solver run, between ac_lookup_begin and ac_lookup_done.
   Minimum     Return 0.  */
HSK_CORE int ac_lookup_object(int zero);

/* Return the object of a type and a name in a model.

   Parameters  model  The result of ac_lookup_object, which may be 0.
               type   HSK_TYPE_STRING.
               name   HSK_LIST_NAME.
   Returns     A handle; 0 if `model` is 0 or the model has no such string.
   Called      In a solver run, after ac_lookup_done.
   Minimum     Return 0.  */
HSK_CORE int ac_lookup_by_name(int model, int type, const char *name);

/* Copy the value of a string.

   Parameters  object     The result of ac_lookup_by_name, never 0.
               attribute  HSK_ATTRIBUTE_STRING.
               buffer     Has HSK_STRING_SIZE bytes.  The value and its NUL are
                          written to it.  A longer value has to be truncated
                          here.  The library uses the names that end within the
                          first 1023 characters.
   Called      In a solver run, if ac_lookup_by_name has returned a handle.
   Minimum     Do nothing: the list counts as empty.  */
HSK_CORE void ac_get_string(int object, int attribute, int zero, char *buffer);

/* ---- Core library: plug-ins -------------------------------------------- */

/* Register the directories of a plug-in before its files are looked for.

   The function may change KLV_USER_PLUGIN_DIR, which is read after the call.

   Parameters  name  The name of the plug-in, as the model's list has it.
   Called      By F2C_VORN_VEK_CFG_ENV_READ for each plug-in that the model names,
               if the plug-in's file is neither in the current nor in the private
               directory and KLV_USER_PLUGIN_DIR is set.
   Minimum     Do nothing.  Then plug-ins are found in the directories that the
               variable has.  */
HSK_CORE void register_new_plugin_paths(const char *name);

#ifdef __cplusplus
}
#endif

#endif
