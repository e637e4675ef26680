/* hsk_control.h - what a host may tell the stand-in of the core library.

   The stand-in keeps one model, a few settings and the answers to the alerts
   to come.  Like the library that calls it, it serves one caller at a time.  */

#ifndef HSK_CONTROL_H
#define HSK_CONTROL_H

#define HSK_PLUGIN_LIST_SIZE 65536 /* a model's list, the terminator included */
#define HSK_ANSWER_COUNT 16        /* scripted answers that can wait */

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

/* Send the lines for the user, alerts included, to standard error from now on,
   or with 0 to standard output, where they go at first.  */
HSK_API void hsk_output_to_error(int to_error);

/* How many entries for the user were errors ("ERROR" or "ABORT" in front), and
   how many warnings, so far.  */
HSK_API int hsk_error_count(void);
HSK_API int hsk_warning_count(void);

/* Answer an alert to come with this button, 1 to 3.  Answers are used in the
   order in which they were queued; when none waits, the user is asked.
   Result: 0 queued; 1 no such button, or the queue is full.  */
HSK_API int hsk_queue_answer(int button);

/* Load a model in place of the one before.  The file is plain text: "!" starts
   a comment, and the line "plugin_list a:b:c" gives the model that list.  All
   else in it is passed over.  A file without the line is a model without the
   list.
   Result: 0 loaded; 1 the file does not open; 2 the list does not fit
   HSK_PLUGIN_LIST_SIZE.  After 1 and 2 there is no model.  */
HSK_API int hsk_load_model(const char *path);

#ifdef __cplusplus
}
#endif

#endif
