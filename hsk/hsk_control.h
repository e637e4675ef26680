/* hsk_control.h - control of the stub core library.

   The stub holds one model, a few settings, a printer and a queue of answers to
   dialogs.
   Like the library that calls it, it serves one caller at a time.  */

#ifndef HSK_CONTROL_H
#define HSK_CONTROL_H

#define HSK_PLUGIN_LIST_SIZE 65536 /* a model's list, including the NUL */
#define HSK_ANSWER_COUNT 16        /* answers in the queue */

#if defined _WIN32 && defined HSK_BUILD
#define HSK_API __declspec(dllexport)
#elif defined _WIN32
#define HSK_API __declspec(dllimport)
#else
#define HSK_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Write the lines for the user, including dialogs, to standard error from now
   on, or with 0 to standard output, which is the initial state.  */
HSK_API void hsk_output_to_error(int to_error);

/* Pass each entry for the user to `printer` from now on instead of writing it, with
   `data` unchanged.  A dialog that is asked is written; one that is not prints nothing.
   With a null `printer`, which is the initial state, entries are written.  */
HSK_API void hsk_set_printer(void (*printer)(const char *text, void *data), void *data);

/* Ask the user in dialogs, which is the initial state, or with 0 let a dialog take its
   default button when no answer is queued.  */
HSK_API void hsk_set_asking(int asks);

/* Return the number of errors (entries for the user that begin with "ERROR" or
   "ABORT") and of warnings ("WARNING") so far.  */
HSK_API int hsk_error_count(void);
HSK_API int hsk_warning_count(void);

/* Queue `button`, 1 to 3, as the answer to a later dialog.  Answers are used in
   the order in which they were queued.  When the queue is empty, a dialog asks
   the user, if hsk_set_asking allows it.
   Returns 0 if queued; 1 if there is no such button or the queue is full.  */
HSK_API int hsk_queue_answer(int button);

/* Load a model, which replaces the previous one.  The file is plain text.  "!"
   starts a comment.  The line "plugin_list a:b:c" sets the model's list; other
   lines are ignored.  A model without the line has no list.
   Returns 0 if loaded; 1 if the file does not open or can't be read; 2 if the
   list does not fit HSK_PLUGIN_LIST_SIZE.  After 1 and 2 there is no model.  */
HSK_API int hsk_load_model(const char *path);

#ifdef __cplusplus
}
#endif

#endif
