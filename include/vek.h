/* vek.h - where does a file of a given kind live?

   The interface of the file-location library.

   These rules hold for every operation.  The entries below do not repeat them.

   Threads    The library keeps its state for the whole process and is not
              re-entrant.  Call it from one thread at a time.
   Strings    A string ends with a NUL.  A null pointer counts as the empty
              string.  No string is ever used as a format string.
   Paths      "/" is the separator inside the library.  A path has at most
              VEK_PATH_SIZE - 1 characters.
   Arguments  A `const char *` argument is not changed.  A `char *` argument may
              be: its entry describes how.  Operations that convert separators
              or remove extra ones do so in place and never lengthen the string.
              Operations that expand "$NAME" in place need VEK_PATH_SIZE bytes
              at the string.
   Results    A string result points into a record, into a static buffer or to
              the caller's own string.  Do not write to it.  If there is nothing
              to return, the result is the empty string: test its content, not
              its address.  Only vorn_vek_get_write_default, vek_strrstr and
              vorn_vek_tmp_file_path may return a null pointer.
   Ownership  The caller owns only the block that vorn_vek_search_file
              allocates, which db_search returns as well.
   Records    A record lives as long as the process.  The exception is a
              database's own record: vorn_vek_db_remove releases it, but not the
              records of its tables.
   Buffers    A static buffer is valid until one of the calls that the entry
              lists under "Lifetime".  "Overwrites" lists the buffers of other
              operations that a call overwrites.  An operation that uses others
              named in its entry overwrites what they overwrite.
   Limits     A path or name that does not fit its result yields the empty
              string.  It is never truncated, because a truncated path can name
              another file.  F2C_DB_SEARCH truncates its arguments: see its
              entry.
   Levels     A level is a database's position in the search order, from 1.
   Codes      0 is success, unless the entry says otherwise.
   Names      Databases, classes and extensions compare without regard to case.
              The exceptions are the reserved name "shared" and the classes
              under "Defaults of a class", which compare exactly.
   Output     Lines for the user are printed through the core library.  A report
              begins with "ERROR: ", "WARNING: " or "ABORT: ".  All other lines
              are plain.  An operation that uses others named in its entry
              prints what they print as well.  An entry without "Prints" prints
              nothing of its own.
   Memory     When memory runs out, the operation reports
              "ABORT: malloc_failure", leaves everything as it was and returns
              its failure result.  A report for which there is no memory is not
              printed.  */

#ifndef VEK_H
#define VEK_H

/* ---- Sizes -------------------------------------------------------------

   In bytes, including the terminator. */

#define VEK_PATH_SIZE 268      /* a path */
#define VEK_CFG_PATH_SIZE 267  /* the path of a configuration file */
#define VEK_CFG_FILE_COUNT 3   /* configuration files of one start */
#define VEK_DB_NAME_SIZE 31    /* a database's name */
#define VEK_CLASS_SIZE 31      /* a file class */
#define VEK_TBL_DIR_SIZE 36    /* a table's directory name */
#define VEK_TBL_PATH_SIZE 308  /* the full path of a table's directory */
#define VEK_EXT_SIZE 16        /* an extension, which has no dot */
#define VEK_START_NAME_SIZE 40 /* the name of a product or plug-in */

#if defined _WIN32 && defined VEK_BUILD
#define VEK_API __declspec(dllexport)
#elif defined _WIN32
#define VEK_API __declspec(dllimport)
#elif defined __GNUC__
#define VEK_API __attribute__((visibility("default")))
#else
#define VEK_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Messages ---------------------------------------------------------- */

/* Print a report: an error, a warning or an abort.

   The report is printed whatever the host's message settings are; they are
   restored afterwards.  vek_abort does not end the process: it prints and
   returns.

   Parameters  caller  The name of the calling routine, which is not shown.
   Returns     0 (vek_err and vek_warn).
   Prints      "ERROR: <text>" (vek_err), "WARNING: <text>" (vek_warn) or
               "ABORT: <text>" (vek_abort), as one entry.  */
VEK_API int vek_err(const char *caller, const char *text);
VEK_API int vek_warn(const char *caller, const char *text);
VEK_API void vek_abort(const char *caller, const char *text);

/* ---- Session ----------------------------------------------------------- */

/* Start the product's session, add a plug-in to it, or prepare a solver run.

   This is the host's entry to a session.  The first call fixes the product's
   name.  If it is the call of a solver run, it also fixes solver mode.

   - A product session: vek_env_read reads the ENVIRONMENT statements of the
     product's shared, site and private file into the process environment.  Then
     vorn_vek_init starts the session.
   - A plug-in: vorn_vek_init adds it to the session.
   - A solver run: vek_env_read reads the ENVIRONMENT statements of the
     product's three files, then those of the plug-ins that the model names.
     The host registers a plug-in's paths before KLV_USER_PLUGIN_DIR is searched
     for its file.  db_search starts the session later.

   Parameters  name  The empty string or the product's name for a product
                     session, the name of a plug-in, or
                     "f2c_vorn_vek_cfg_env_read" for a solver run.
   Returns     Outside a solver run the result of vorn_vek_init.  In a solver
               run 0, or 1 if a file did not open or its last setting failed.
               -1  The name has VEK_START_NAME_SIZE or more characters, or
                   vek_chk_cfg_files did not return 0.  The next call then
                   counts as the first.
   Prints      An abort line with the result -1.  Two reports if a file of the
               product or its last setting failed.  A warning for a list of
               plug-ins that is too long.  At the first call of a solver run an
               empty line, and at its end what printenvars prints.
   Overwrites  What vorn_vek_init overwrites.  */
VEK_API int vorn_vek_cfg_env_read(const char *name);

/* Prepare a solver run.

   It calls vorn_vek_cfg_env_read with the name of a solver run.

   Returns     The result of vorn_vek_cfg_env_read.  */
VEK_API int F2C_VORN_VEK_CFG_ENV_READ(void);

/* Start the session (first call) or add a plug-in's files to it (later calls).

   vek_set_product_name must have run before.  The steps are:

   - The first start sets the number of databases to 0, even if it finds no
     files.
   - vek_cfg_read reads the files that vek_chk_cfg_files finds: shared, site
     and, at the first start only, private.
   - Under a name other than the product's, outside solver mode, vek_env_read
     reads each file's ENVIRONMENT statements just before its other statements
     are read.
   - Missing table directories are created as by vek_upd_vek_tbls.
   - The outcome is tested.

   Parameters  name  The short name of the product or plug-in, shorter than
                     VEK_START_NAME_SIZE.
   Returns     0   The session is started, or there is nothing to do because
                   there is no shared file and interface mode is off.
               1   There is no database, a database has no tables, or the
                   numbers of tables differ.
               -1  A fatal condition, or no default writable database outside
                   solver mode.
   Prints      An empty line at a first start under a name other than the
               product's.  Two warnings if a file or a table directory had a
               fault.  A report for each fault of the outcome, and one for a
               fatal condition.  Without a default writable database outside
               solver mode it also shows a dialog and reports the dialog's text.
   Overwrites  The buffers of vorn_vek_input2full, vorn_vek_input2path and
               vorn_vek_input2file; for a database path with "~" that of
               _vek_getlongpath.  */
VEK_API int vorn_vek_init(const char *name);

/* Find the configuration files of a product or plug-in.

   A missing private file is created.  A path of more than VEK_CFG_PATH_SIZE - 1
   characters does not count as a file that exists.  Each output has
   VEK_PATH_SIZE bytes, does not overlap `name`, and may be null if it is not
   wanted.

   Parameters  shared  Receives each candidate in turn.
               site    Becomes empty if there is no site file.
   Returns     0  All three are set.
               1  A fatal condition, which is reported.
               2  There is no shared file and interface mode is off.  `site` and
                  `private_file` are not changed.
   Prints      Reports of the fatal condition; nothing with the result 2.  If
               the private file is missing and cannot be created, also what an
               update of it may print (see "Private file").  */
VEK_API int vek_chk_cfg_files(const char *name, char *shared, char *site, char *private_file);

/* Set the product's short name from KLV_PRODUCT_NAME.

   The name is the first 15 characters of the value, or "vorn" if the variable
   is unset.  Only the first call acts.  */
VEK_API void vek_set_product_name(void);

/* Return the product's short name.

   Returns     The name; the empty string before vek_set_product_name.
   Lifetime    Static, for the life of the process.  */
VEK_API const char *vek_product_name(void);

/* Compare a string with the product's short name, letter case included.

   Returns     1 if they are equal, else 0.  */
VEK_API int vek_product_name_is(const char *text);

/* Return the product's display name, such as "TAVIK/Vorn".

   Lifetime    Static, for the life of the process.  */
VEK_API const char *vek_product_string(void);

/* Set or return solver mode, which is 0 at first.

   Only the first call of the setter acts.

   Returns     The mode.  */
VEK_API void vek_set_solver_mode(int mode);
VEK_API int vek_solver_mode(void);

/* Turn interface mode on permanently, or return it.

   Interface mode is 0 at first; the setter makes it 1.  With it a missing
   shared file is a fatal condition, and db_search leaves starting to the host.

   Returns     The mode.  */
VEK_API void vek_set_interface_mode(void);
VEK_API int vek_get_interface_mode(void);

/* Return the operating system's name, as hosts compare it.

   Returns     "nt" on every system.
   Lifetime    Static, for the life of the process.  */
VEK_API const char *vorn_vek_get_os(void);

/* ---- Configuration files ----------------------------------------------- */

/* Read one configuration file.

   Endless devices do not open.  A statement has at most 266 characters, not
   counting its comment.  If a line with a comment is longer, what follows its
   267th character is read as a line of its own.

   Parameters  path       "$" in it is not expanded.
               cfg_index  The number that the file's records carry.  The
                          session's private file has a number of its own, and
                          some statements are rejected there only.
   Returns     0    No statement was rejected, not counting those for test rigs.
               1    The file does not open or cannot be read to its end, or the
                    last rejected statement has this code.
               2-6  The code of the last rejected statement.
   Prints      "Reading configuration file '<path>'", or a report that the file
               does not open or cannot be read to its end.  For each rejected
               statement one or two reports with line number and path, after
               those of vek_db_read, vek_set_write_db, vek_tbl_read,
               vek_propfile_read and vek_testrig_read.  Plain lines of advice
               for discontinued statements.  A closing report if the result is
               not 0.
   Overwrites  The buffers of vorn_vek_input2full, vorn_vek_input2path and
               vorn_vek_input2file; for a database path with "~" that of
               _vek_getlongpath.  */
VEK_API int vek_cfg_read(const char *path, int cfg_index);

/* Read the ENVIRONMENT statements of a configuration file into the environment.

   A name has at most 60 characters.  A value has at most 180 before
   vek_eval_str expands it.  Lines are read in chunks of 255 characters.

   Parameters  path  Expanded in place as by vek_eval_str.
   Returns     The result of the last setting, or 0 if there was none.  1 if the
               file does not open or cannot be read to its end.
   Prints      In solver mode a line with the path.  A report if the file does
               not open or cannot be read to its end.  Two reports for each bad
               statement.  */
VEK_API int vek_env_read(char *path);

/* ---- Private file ------------------------------------------------------

   The user's private configuration file is the only one that is also written:
   when a start does not find it, when databases are added or removed or the
   default writable database is set, and when the user saves.

   The new text is written to a new file in the same directory (".vek-" and
   numbers), synced, and renamed over the private file.  So the name always leads
   to the old text or the new one: for every reader, after a kill, after a power
   cut, and on a full disk.  Mode, owner and group are kept.  A symbolic link is
   followed.

   The old file is overwritten in place where a new file would lose something of
   the user's (other hard links, an owner that cannot be set, an access control
   list or extended attributes), or cannot be created there or renamed over it.
   Meanwhile a copy of the old file exists in its directory as
   "<file>.vek-previous", or in /var/tmp where nothing can be created there.

   Updates lock the file against each other and wait at most 10 seconds.
   Readers do not wait.  If another program has changed the file meanwhile, the
   update begins again, at most four times.

   An update may print:

   - a warning, once per process, when HOME is needed and not set;
   - two warnings, once per process, when the file does not open for writing;
   - "ERROR: Cannot create file '<backup>' : <reason>" when the backup could not
     be made; an older one is kept, and an update goes on without;
   - the reports of vorn_vek_copy_file2file and vorn_vek_delete_file;
   - "ERROR: cannot open file <path>";
   - "ERROR: Private cfg file <path> could not be written: <reason>", after
     which the file has its old text (its new text if only the directory could
     not be synced);
   - "ERROR: The previous text is kept in file <path>." when the old text could
     not be restored or a killed update has left its copy; it is printed again
     at each first start and each later update, and nothing is written as long
     as that file exists;
   - "WARNING: Database '<name>' cannot be kept in the private cfg file; it is
     known in this session only." when a statement could not hold it, once for
     each; the same for a "Table of class", a "Property file of class" and a
     "Test rig of class".  */

/* Bring the private file up to date with the session, after a backup of it.

   DATABASE_ORDER, DEFAULT_WRITE_DB and ENVIRONMENT lines get their present
   values.  All other lines are kept byte for byte.  Nothing is written if
   KLV_UPDATE_CFG is "no".

   - An ENVIRONMENT line is kept as it is if its variable is not set, or if the
     line could not hold its value: one that is empty or only white space, one
     of more than 180 characters, one with "!" or a line ending, or one that
     makes the line longer than 254 characters.
   - DEFAULT_WRITE_DB lines are kept as they are while no default is set.
   - Lines are read in chunks of 255 characters.
   - A file without text does not replace a backup that has some.

   Parameters  tag  "vorn_vek_db_add" also adds the database `name` before the
                    first DATABASE line.  "vorn_vek_db_remove" also converts the
                    lines of the database that is spelled `name` to comments.
                    vorn_vek_db_add and vorn_vek_db_remove use these two.
                    "vorn_sav_cfg" writes the file as a save does.
                    "vek_chk_cfg_files" writes it as a first start does, over
                    its text.  With any other tag nothing else changes.  Tags
                    compare without regard to case.
   Returns     1  The file is written, or KLV_UPDATE_CFG is "no".
               0  The file is not written.
   Prints      A report with the result 0, unless it is one of those that are
               printed once per process.  See "Private file" above.
   Overwrites  The buffers of vorn_vek_path2alias and vorn_vek_input2file; with
               the tag "vorn_sav_cfg" those of vorn_sav_cfg.  */
VEK_API int vorn_wrt_cfg(const char *tag, const char *name);

/* Ask the user how to save, then write the private file from the session.

   A dialog asks.  KLV_UPDATE_CFG is ignored.  Each line ends in a newline
   ("\r\n" on Windows).  The file then holds:

   - the user's databases, tables, property files and test rigs;
   - the default writable database;
   - with KLV_VEK_SEARCH at "yes" the order of all databases;
   - the ENVIRONMENT lines of the old file with their present values, or as they
     were where vorn_wrt_cfg keeps them.

   All else is lost.  What a statement cannot hold is left out with a warning:

   - "!";
   - white space in a name, a class, a test rig or the alias of a property file;
   - a property file to which its alias does not lead back;
   - what makes the statement longer than 266 characters even with single spaces
     between its words.

   With the answer "Backup" nothing is written unless there is a whole backup.
   A file whose name ends in "q" has no backup and is written.

   Returns     1   The file is written.
               0   The file is not written, or the answer is not one that the
                   dialog offers.
               -1  The user cancelled.
   Prints      See "Private file" above.  With the answer "Backup" also the two
               lines of the backup and one more.
   Overwrites  The buffers of vorn_vek_path2alias, vorn_vek_input2full,
               vorn_vek_input2path and vorn_vek_input2file; for a path with "~"
               that of _vek_getlongpath.  */
VEK_API int vorn_sav_cfg(void);

/* ---- Text -------------------------------------------------------------- */

/* Expand each "$NAME" of a string in place.

   A name ends at "/" or at the end of the string.  Extra separators are removed
   after each replacement.  A string without "$" is not changed.  The string
   becomes empty if a variable is unset, if it would have more than 266
   characters with the value in place, or at the 65th replacement.

   Returns     `text`.
   Prints      Two warnings that name the variable if the string becomes
               empty.  */
VEK_API char *vek_eval_str(char *text);

/* Reduce each run of "/" to one and remove one at the end, in place.

   A scheme ("klvds://", "file://", "file:////") and the first character are
   kept as they are.

   Returns     `text`.  */
VEK_API char *vek_rm_extra_separators(char *text);

/* Convert each "\" to "/", or each "/" to "\", in place.

   The conversion stops at the first newline.  vorn_vek_unix2nt_path converts to
   "\", the other two to "/".  vorn_vek_runtime_path_port is the older name of
   vorn_vek_nt2unix_path.

   Returns     `text`.  */
VEK_API char *vorn_vek_nt2unix_path(char *text);
VEK_API char *vorn_vek_runtime_path_port(char *text);
VEK_API char *vorn_vek_unix2nt_path(char *text);

/* Return the long form of a path that has short names in it.

   Returns     The long form; `path` itself if there is no other form.
   Lifetime    Static buffer, until the next call.  For a path with "~" the next
               call of vek_db_read, of vorn_vek_path2alias or of an operation
               that uses these overwrites it as well.  */
VEK_API const char *_vek_getlongpath(const char *path);

/* Compare two strings without regard to case.

   Parameters  count  The most characters that are compared.  With 0 the strings
                      are equal.
   Returns     0 if they are equal; else the difference of the first two
               characters that differ, both in upper case and unsigned.  */
VEK_API int vek_strcasecmp(const char *first, const char *second);
VEK_API int vek_strncasecmp(const char *first, const char *second, int count);

/* Find the last occurrence of `part` in a string.

   Returns     A pointer into `text`; null if there is none.  For an empty part,
               the end of `text`.  */
VEK_API char *vek_strrstr(const char *text, const char *part);

/* Copy a string with "a" to "z" in upper case.

   All other bytes are copied as they are.

   Parameters  upper  Has room for the string and its terminator.  */
VEK_API void vek_str_copy_to_upper_case(const char *text, char *upper);

/* Test whether a file opens for reading.

   Returns     1 if it does, else 0.  0 for a directory.  */
VEK_API int vek_file_exists(const char *path);

/* ---- Databases --------------------------------------------------------- */

/* Add the database of a DATABASE statement.

   A missing directory is created, one level only.  The new database gets all
   tables that the others have.  Only a missing word and a long name are
   rejected before the directory is created.

   Parameters  statement  "DATABASE <name> <path>".  The first word is ignored.
                          The path is the rest of the line, in which "$NAME" is
                          expanded by vek_eval_str.
   Returns     0  The database is added.
               1  The name or the path is missing, or memory ran out.  Also,
                  silently, while the host has set a count that the list does
                  not have.
               2  The directory is not accessible and cannot be created.
               3  The name is already defined.
               4  The name has more than 30 characters.
               5  Not used.
               6  The name is "shared", at the private file's index.
   Prints      Only the warnings of vek_eval_str and "ABORT: malloc_failure".
   Overwrites  For a path with "~" the buffer of _vek_getlongpath.  */
VEK_API int vek_db_read(const char *statement, int cfg_index);

/* Test whether a directory is accessible.

   Returns     1 if it is, else 0.  0 for every directory while the current one
               is gone or has a path of 260 or more characters.  */
VEK_API int vorn_vek_db_exists(const char *path);

/* Test whether a database was writable when it was last probed.

   Returns     1 if it was; 0 if not, or if there is no such database.  */
VEK_API int vorn_vek_db_iswritable(const char *name);

/* Set the default writable database.

   vorn_vek_set_write_default then calls vorn_wrt_cfg and ignores its result.
   vorn_vek_set_write_default_no_cfg_update does not.

   Returns     0  The default is set.
               1  There is no such database or it is not writable, or memory ran
                  out.
   Prints      A report with the result 1.
   Overwrites  The string of vorn_vek_get_write_default.
               vorn_vek_set_write_default also overwrites what vorn_wrt_cfg
               overwrites.  */
VEK_API int vorn_vek_set_write_default(const char *name);
VEK_API int vorn_vek_set_write_default_no_cfg_update(const char *name);

/* Return the name of the default writable database, spelled as it was set.

   Returns     The name; null while none is set.
   Lifetime    Until the default is set again, which overwrites the string in
               place.  */
VEK_API const char *vorn_vek_get_write_default(void);

/* Set the default writable database from a DEFAULT_WRITE_DB statement.

   It acts as vorn_vek_set_write_default_no_cfg_update.

   Parameters  statement  The name is the word after the first.
   Returns     0  The default is set.
               1  That operation returned 1, or there is no such word.
   Prints      A report with the result 1; nothing if there is no such word.
   Overwrites  The string of vorn_vek_get_write_default.  */
VEK_API int vek_set_write_db(const char *statement);

/* Set or return the number of databases.

   The setter overwrites the count and changes nothing else.  A lower count
   hides the databases after it, and the next one added replaces the first of
   them.  With a count that the list does not have, nothing is found after its
   last database, and no database can be added until the count is right again.

   Returns     The count.  */
VEK_API void vek_set_number_of_veks(int count);
VEK_API int vorn_vek_get_number_of_veks(void);

/* Return the level of a database.

   Returns     The level; -1 if there is no database of that name.  */
VEK_API int vorn_vek_db2level(const char *name);

/* Return the name of the database at a level.

   Returns     A string in the database's record; the empty string for a level
               below 1 or above the count.
   Prints      One report for such a level.
   Lifetime    Until the database is removed.  */
VEK_API const char *vorn_vek_level2db(int level);

/* Add a database of the user's to the session and to the private file.

   vek_db_read adds it, vek_upd_vek_tbls creates its table directories, and
   vorn_vek_db_reorder moves it to `level`.  Then vorn_wrt_cfg is called; its
   result is ignored.

   The next session finds the database only if the private file has a DATABASE
   line and can hold the new one.  A name or path with "!", or one that makes
   the statement longer than 266 characters ("DATABASE", name and path with
   single spaces), is known in this session only.

   Parameters  name   A name with white space adds a database of its first word,
                      at a path that begins with the rest.
               level  If it is not valid, the database is kept at the end of the
                      list.
   Returns     0    The database is added.
               1    Nothing is added: the name or the path is empty or too long,
                    or vek_db_read returned 1.
               2-6  Nothing is added: the code of vek_db_read.
   Prints      A report for a name or path that is empty or too long, for the
               codes 2, 3 and 6, and for a level that is not valid.  A warning
               for a database that the private file cannot hold.
   Overwrites  For a path with "~" the buffer of _vek_getlongpath.  What
               vorn_wrt_cfg overwrites.  */
VEK_API int vorn_vek_db_add(const char *name, const char *path, int level);

/* Remove a database from the list, not from the disk, and call vorn_wrt_cfg.

   The result of vorn_wrt_cfg is ignored.  The levels of the databases after it
   become lower.  Its record is released; those of its tables are kept.

   Parameters  name  May be the string of the record that is removed.
   Returns     0  The database is removed.
               1  It is the default writable database, or there is none of that
                  name.
   Prints      A report with the result 1.
   Overwrites  What vorn_wrt_cfg overwrites.  */
VEK_API int vorn_vek_db_remove(const char *name);

/* Move a database to another level; those in between shift by one.

   Returns     0  The database is at that level.
               1  The level is below 1 or above the count, or there is no such
                  database.
   Prints      A report with the result 1.  Nothing for a level that exists only
               by a count that the host has set.  */
VEK_API int vorn_vek_db_reorder(const char *name, int level);

/* Move the databases of a DATABASE_ORDER statement to the front, in its order.

   The reader of configuration files calls this only while KLV_VEK_SEARCH is
   "yes".

   Parameters  statement  The names follow the first word, with commas between
                          them.  "shared" also stands for "<product>_shared".
   Returns     0  The databases are in order.
               1  There are no names.
               2  A name is not defined.  The others are in order.
   Prints      Nothing.  */
VEK_API int vek_db_setorder(const char *statement);

/* Write the database report to a file, which is emptied first.

   Every database is probed again.  vorn_vek_db_iswritable returns the outcome
   from then on.

   Returns     0  The report is written, or the path is empty.
               1  The file does not open.
   Prints      A report with the result 1.  */
VEK_API int vorn_vek_db_info(const char *path);

/* ---- Tables ------------------------------------------------------------ */

/* Add the table of a TABLE statement to all databases.

   Parameters  statement  "TABLE <class> <directory> <ext>".
               cfg_index  The number that the records carry.
   Returns     0  The table is added.  Also if the class or extension is already
                  defined, which is then silently ignored.
               1  Words are missing, a word is too long, there is no database,
                  or memory ran out.
               2  The class or extension is already defined, at the private
                  file's index.
   Prints      Two reports for a word that is too long.  Two reports if there is
               no database.  */
VEK_API int vek_tbl_read(const char *statement, int cfg_index);

/* Append a table to one database.

   A string too long for its field, or a position that no database has, stores
   nothing.

   Parameters  position  The database's position, counted from 0.  */
VEK_API void vek_tbl_add(int position, const char *file_class, const char *dir, const char *ext,
                         int cfg_index);

/* Look up the extension, the class or the table's directory name.

   Parameters  ext  May carry a version, ";" and what follows, which is not
                    compared.
   Returns     vorn_vek_class2ext: the extension.  vorn_vek_ext2class: the
               class.  vorn_vek_class2tbl and vorn_vek_ext2tbl: the table's
               directory name.  Each is a string in a record, or the empty
               string.  */
VEK_API const char *vorn_vek_class2ext(const char *file_class);
VEK_API const char *vorn_vek_class2tbl(const char *file_class);
VEK_API const char *vorn_vek_ext2class(const char *ext);
VEK_API const char *vorn_vek_ext2tbl(const char *ext);

/* Return the directory alias of an extension's table at a level.

   The alias has the form "<database>/directory".

   Parameters  ext  For the empty string and for "*" the alias is "<database>".
   Returns     A string in a record, or a static buffer for these two.  The
               empty string if there is no such table or level.
   Lifetime    The static buffer: until the next call for these two.  */
VEK_API const char *vek_ext2alias(const char *ext, int level);

/* Return the table directory of an extension or a class at a level.

   Returns     A string in a record, or the empty string.
   Prints      A report for a level below 1 or above the count.  */
VEK_API const char *vorn_vek_ext2path(const char *ext, int level);
VEK_API const char *vorn_vek_get_tbl_path(const char *file_class, int level);

/* Return the table directory of a class in the default writable database.

   Returns     As vorn_vek_get_tbl_path; the empty string while no default is
               set.
   Prints      The report of level -1 while no default is set.  */
VEK_API const char *vorn_vek_get_def_wri_tbl(const char *file_class);

/* ---- Table directories ------------------------------------------------- */

/* Create the table directories that are missing on disk.

   The selector means:

   - 1 or more: the database at that level.  It gets the tables whose
     configuration index is not above its own.
   - -1: all databases, each as above.
   - -2: the databases of the private file, each with all tables.
   - Any other selector selects nothing.

   Returns     1 if a directory could not be created, else 0.
   Prints      Three warnings for each directory that could not be created.  */
VEK_API int vek_upd_vek_tbls(int selector);

/* Create the missing table directories at the end of a start.

   vek_upd_all_vek_tbls is for the first start and acts as vek_upd_vek_tbls with
   -1.  vek_upd_plg_vek_tbls is for a later start and acts as with -2.

   Parameters  cfg_files  The start's files, which are not changed.
                          vek_upd_all_vek_tbls remembers them at its first call
                          only.
   Returns     As vek_upd_vek_tbls.  */
VEK_API int vek_upd_all_vek_tbls(char (*cfg_files)[VEK_CFG_PATH_SIZE]);
VEK_API int vek_upd_plg_vek_tbls(char (*cfg_files)[VEK_CFG_PATH_SIZE]);

/* Create a new database directory with all table directories on disk.

   The list of databases is not changed.

   Returns     1  The directory is created, even if some table directories are
                  not.
               0  The directory exists already or cannot be created.
   Prints      One report with the result 0.  Reports for table directories that
               cannot be created.  */
VEK_API int vorn_cre_dat(const char *path);

/* Write the table report to a file, which is emptied first.

   Returns     0  The report is written, or the path is empty.
               1  The file does not open.
   Prints      A report with the result 1.  */
VEK_API int vorn_vek_tbl_info(const char *path);

/* ---- Defaults of a class -----------------------------------------------

   Here classes compare exactly, letter case included.  A class of more than 30
   characters or a value of more than 267 is rejected.  */

/* Set the default property file of a class from a PROPFILE statement.

   Parameters  statement  "PROPFILE <class> <path>".  The path is a name in any
                          form.  It is expanded by vek_eval_str and must lead to
                          a file.  A name in the database "shared" may also lead
                          to the product's own shared database.
   Returns     0  The default is set.
               1  Words are missing or too long, or memory ran out.
               2  There is no such file.
   Overwrites  The buffers of vorn_vek_input2full, vorn_vek_input2path and
               vorn_vek_input2file.  */
VEK_API int vek_propfile_read(const char *statement, int cfg_index);

/* Set the default test rig of a class from a TESTRIG statement.

   Parameters  statement  "TESTRIG <class> <name>".  The name is stored as it is
                          written.
   Returns     0  The default is set.
               1  Words are missing or too long, or memory ran out.
   Overwrites  The string of vorn_vek_get_def_testrig for the class.  */
VEK_API int vek_testrig_read(const char *statement, int cfg_index);

/* Set the default of a class for this session.

   Parameters  file  A name in any form.  It is expanded in place by
                     vek_eval_str; then each "\" in it is converted to "/".
   Returns     1  The default is set.
               0  There is no such file (silently), a string is too long, or
                  memory ran out.
   Overwrites  vorn_vek_set_def_propfile: the buffers of vorn_vek_input2full,
               vorn_vek_input2path and vorn_vek_input2file.
               vorn_vek_set_def_testrig: the string of vorn_vek_get_def_testrig
               for the class.  */
VEK_API int vorn_vek_set_def_propfile(const char *file_class, char *file);
VEK_API int vorn_vek_set_def_testrig(const char *file_class, const char *name);

/* Return the default property file or the default test rig of a class.

   Returns     The alias of the property file, as vorn_vek_path2alias returns
               it, or the name of the test rig, in a record.  The empty string
               if there is none.
   Overwrites  vorn_vek_get_def_propfile: the buffers of vorn_vek_path2alias and
               vorn_vek_input2file.
   Lifetime    The property file: that of vorn_vek_path2alias.  The test rig:
               until the class's test rig is set again, which overwrites it.  */
VEK_API const char *vorn_vek_get_def_propfile(const char *file_class);
VEK_API const char *vorn_vek_get_def_testrig(const char *file_class);

/* ---- Path strings ------------------------------------------------------

   These operations look at the string only, not at the disk.  Each result is a
   static buffer of the operation's own, of VEK_PATH_SIZE bytes.  A string that
   is too long yields the empty string.

   An operation that uses one listed under "Lifetime" overwrites the buffer as
   well:

   - F2C_DB_SEARCH does what db_search does.
   - vorn_vek_set_def_propfile and vek_propfile_read do what vorn_vek_input2full
     does.  So do the reading of configuration files and every start.
   - vorn_sav_cfg does what vorn_vek_input2full and vorn_vek_path2alias do.  So
     does vorn_wrt_cfg with the tag "vorn_sav_cfg".

   A file operation, here, copies, deletes, renames or backs up a file.  The
   private file is updated by vorn_wrt_cfg, vorn_sav_cfg, vorn_vek_db_add,
   vorn_vek_db_remove and vorn_vek_set_write_default.  */

/* Return the directory part of a path, without the last "/".

   Parameters  text  Each "\" in it is converted to "/".
   Lifetime    Until the next call of it or of vorn_vek_input2full,
               vorn_vek_input2tblpth, vorn_vek_expand2full, vorn_vek_search_file
               or db_search.  */
VEK_API const char *vorn_vek_input2path(char *text);

/* Return what follows the last "/", or the whole string if there is none.

   Parameters  text  Each "\" in it is converted to "/".
   Lifetime    Until the next call of it or of vorn_vek_add_extension,
               vorn_vek_path2alias, a file operation, an operation that updates
               the private file, or one that overwrites the buffer of
               vorn_vek_input2path.  */
VEK_API const char *vorn_vek_input2file(char *text);

/* Return the file name without its last "." and what follows.

   Parameters  text  Each "\" in it is converted to "/".
   Lifetime    Until the next call of it or of vorn_vek_copy_file2db, or of
               vorn_vek_search_file or db_search when they walk the levels.  */
VEK_API const char *vorn_vek_input2base(char *text);

/* Return what follows the last "." of the whole string, directories included.

   Lifetime    Until the next call of it or of vorn_vek_add_extension or
               vorn_vek_copy_file2db.  */
VEK_API const char *vorn_vek_input2ext(const char *text);

/* Return the last two components of a path.

   Parameters  text  Each "\" in it is converted to "/".
   Lifetime    Until its next call.  */
VEK_API const char *vek_input2tbl_and_file(char *text);

/* Return a name with an extension added if its file name has none.

   Returns     `name` with each "\" converted to "/", followed by "." and `ext`
               if its file name has no extension.  A "." that already ends the
               name is not added again.
   Overwrites  The buffers of vorn_vek_input2file and vorn_vek_input2ext.
   Lifetime    Until its next call.  */
VEK_API const char *vorn_vek_add_extension(const char *name, const char *ext);

/* ---- Aliases -----------------------------------------------------------

   A file has four forms of name:

   - the URL form, "klvds://database/directory/file";
   - the bracket form, "<database>/directory/file";
   - the file URL, "file://path";
   - a plain path.

   Where a name is resolved, the database "shared" stands for
   "<product>_shared", except in the product dunmoren.  A name that cannot be
   resolved is returned as a name, not as a path.  Nothing here prints.  */

/* Return the bracket form of a URL form, or the path of a file URL.

   Returns     The bracket form or the path.  Any other string is returned as it
               is.
   Lifetime    Static buffer, until the next call.  */
VEK_API const char *vorn_vek_standardize_alias(const char *text);

/* Return the directory of a directory alias, which is a name without its file.

   Parameters  text  A file URL in it is overwritten by its path.
   Returns     The table's directory, or the database's if there is no such
               table: a string in a record.  `text` itself for a file URL, for a
               string with no such database and for one of more than 267
               characters.  */
VEK_API const char *vorn_vek_alias2path(char *text);

/* Return the bracket form of a file's real path.

   Parameters  text  Each "\" in it is converted to "/".
   Returns     A static buffer; `text` itself if no table directory holds the
               file.
   Overwrites  The buffers of vorn_vek_input2path and vorn_vek_input2file.
   Lifetime    Static buffer of VEK_TBL_PATH_SIZE bytes, until the next
               call.  */
VEK_API const char *vorn_vek_input2tblpth(char *text);

/* Return the real path of a name in any form.

   Parameters  text  Each "\" in it is converted to "/".
   Overwrites  The buffers of vorn_vek_input2path and vorn_vek_input2file.
   Lifetime    Static buffer, until the next call of it, of
               vorn_vek_expand2full, vorn_vek_search_file, db_search or an
               operation that uses these (see "Path strings").  */
VEK_API const char *vorn_vek_input2full(char *text);

/* Return the real path of a name once KLV_VEK_EXPAND_PATH has been "yes".

   Parameters  text  Each "\" in it is converted to "/" once the variable has
                     been "yes".  Before that it is not changed.
   Returns     As vorn_vek_input2full once the variable has been seen to be
               "yes".  Before that, `text` itself.
   Overwrites  The buffers of vorn_vek_input2full, vorn_vek_input2path and
               vorn_vek_input2file, once the variable has been "yes".
   Lifetime    Static buffer of its own, until its next call.  */
VEK_API const char *vorn_vek_expand2full(char *text);

/* Return the name of a real path (reverse lookup).

   The name is "klvds://database/directory/file" or "klvds://database/file".

   - A path deeper inside a table's directory is returned as a path.
   - A path that is neither in a table nor directly in a database becomes a file
     URL.
   - A URL form or bracket form of a database is returned as it is.
   - A file URL counts as a path.
   - If the URL does not fit, the path is returned.

   Parameters  text  Each "\" in it is converted to "/".
   Returns     Always a static buffer.
   Overwrites  The buffer of vorn_vek_input2file; for a path with "~" that of
               _vek_getlongpath.
   Lifetime    Until the next call of it, of vorn_vek_get_def_propfile, of a
               file operation, or of an operation that updates the private
               file.  */
VEK_API const char *vorn_vek_path2alias(char *text);

/* ---- File search ------------------------------------------------------- */

/* Find the file of a name in any form.

   A file is found if it opens for reading.  A name in the database "shared" is
   also looked for in "<product>_shared".  With KLV_VEK_SEARCH at "yes", a file
   not found so far is looked for at each level from `level` on: by its base
   name and the extension of `file_class`, in the class's table.

   Parameters  name  Each "\" in it is converted to "/".
   Returns     A block with the real path, which the caller releases with
               free().  If the file is not found, the empty string, which is
               static and must not be released.
   Prints      Only "Malloc failed. Unable to continue search.".
   Overwrites  The buffers of vorn_vek_input2full, vorn_vek_input2path and
               vorn_vek_input2file; when it walks the levels also that of
               vorn_vek_input2base.  */
VEK_API char *vorn_vek_search_file(const char *file_class, char *name, int level);

/* ---- File operations ---------------------------------------------------

   They take real paths, not aliases.  Messages name files by alias; a path that
   is too long for an alias is named itself.  Those that act on a file return 0
   for done and 1 for failed.  A failure is reported, with the system's error
   message where the system refused, unless the entry says otherwise.

   "\" is converted to "/" in `char *` paths: by the operations that delete and
   rename before they act, by the others when a message names the path.  The
   variants _silent print no success lines.  Pipes are not written to, and
   endless devices are not read.  */

/* Copy a file; an existing target is emptied first.

   Two paths that are equal without regard to case, or that name one file, are
   rejected.  So is a target of more than 267 characters.  A write or read that
   stops early is not noticed.

   Returns     0 if the copy is done, else 1.
   Prints      Two lines if the target opens afterwards.  A report of a failure.
   Overwrites  The buffers of vorn_vek_path2alias and vorn_vek_input2file.  */
VEK_API int vorn_vek_copy_file2file(char *source, char *target);
VEK_API int vorn_vek_copy_file2file_silent(char *source, char *target);

/* Copy a file into a database, into the table of its extension.

   An extension that no table has leads to the root directory of the file
   system.  An unknown database is rejected.

   Parameters  source  Each "\" in it is converted to "/".
   Returns     0 if the copy is done, else 1.
   Prints      As vorn_vek_copy_file2file.  A report for an unknown database.
   Overwrites  The buffers of vorn_vek_path2alias, vorn_vek_input2file,
               vorn_vek_input2base and vorn_vek_input2ext.  */
VEK_API int vorn_vek_copy_file2db(char *source, const char *database);

/* Delete a file, never a directory.

   Returns     0 if the file is deleted, else 1.
   Prints      A line, unless the file opens all the same afterwards.  A report
               of a failure.
   Overwrites  The buffers of vorn_vek_path2alias and vorn_vek_input2file.  */
VEK_API int vorn_vek_delete_file(char *path);
VEK_API int vorn_vek_delete_file_silent(char *path);

/* Rename a file; an existing target is rejected and not changed.

   Returns     0 if the file is renamed, else 1.
   Prints      Two lines on success.  A report of a failure.
   Overwrites  The buffers of vorn_vek_path2alias and vorn_vek_input2file.  */
VEK_API int vorn_vek_rename_file(char *old_path, char *new_path);

/* Copy a file to its backup, whose name has "q" for the last character.

   The backup is written to a new file in its directory, synced, and renamed over
   an older backup, which is kept if that fails.  It is as private as the file.

   Returns     0 if the backup is made, else 1.
   Prints      As vorn_vek_copy_file2file.  Nothing for a file that does not
               open.
   Overwrites  The buffers of vorn_vek_path2alias and vorn_vek_input2file.  */
VEK_API int vek_backup_file(char *path);
VEK_API int vek_backup_file_silent(char *path);

/* Append a file to another, which is created if need be.

   The target is created even if the source is missing.  A file is not appended
   to itself.

   Returns     0 if the file is appended, else 1.
   Prints      Nothing.  */
VEK_API int vorn_vek_append_file2file(const char *source, const char *target);

/* Return the directory for temporary files, with "/" at its end.

   It is the same at every call.  A child of a process has its own.

   Returns     The directory; null if there is none.
   Lifetime    Static, for the life of the process.  */
VEK_API const char *vorn_vek_tmp_file_path(void);

/* Return the separator, "/".

   Lifetime    Static, for the life of the process.  */
VEK_API const char *vorn_vek_get_file_separator(void);

/* Do nothing.

   Returns     0.  */
VEK_API int vorn_vek_inherit_permissions(void);

/* ---- Solver ------------------------------------------------------------ */

/* Find a file for the solver; the first call starts the session.

   - Unless interface mode is on, the first call reads the model's list of
     plug-ins and calls vorn_vek_init for each name in it.
   - For a model without the list it starts the product of KLV_PRODUCT_NAME, if
     that is vorn, skarn, dunmoren, quorvalind or belthar, in any letter case.
   - Without either there are no databases to search, and a name is tested as a
     plain path.
   - While QNS_PRODUCT_NAME is "ZAPT", every name counts as found.

   Parameters  name   Each "\" in it is converted to "/" if databases are
                      searched.
               found  Becomes 1 or 0.  The result does not show whether the file
                      is found.
   Returns     `name` itself where it is tested as a plain path, found or not,
               and where it counts as found.  Otherwise the result of
               vorn_vek_search_file.  The caller releases only a result that is
               neither `name` nor empty.
   Prints      The first call, unless interface mode is on, prints an empty
               line, what the starts print, and another empty line.  Between
               these it prints a line for each name of 40 or more characters,
               for a list that is too long, for a missing list if a product is
               started in its place, and for each start that failed.  Without
               databases, a name that looks like an alias and is not found
               causes two reports.
   Overwrites  What vorn_vek_search_file overwrites, if databases are
               searched.  */
VEK_API char *db_search(char *name, const char *file_class, int *found);

/* Find a file for a Fortran caller, as db_search does.

   Parameters  result       Receives at most VEK_PATH_SIZE bytes.
               result_size  Not read.
               length       Becomes the number of characters in `result`.
               found        Becomes 1 or 0.
               name         Ends with a NUL.  A string of more than 267
                            characters is truncated to its first 266.  Only what
                            precedes the first space counts.
               name_size    Not read.
               file_class   The same rules as for `name`.
   Overwrites  What db_search overwrites.  */
VEK_API void F2C_DB_SEARCH(char *result, int result_size, int *length, int *found, const char *name,
                           int name_size, const char *file_class);

/* Print the variables of the suite's catalogue that are set in the process.

   Prints      The variables with their values and what they do.  Nothing if
               none is set.  */
VEK_API void printenvars(void);

/* ---- Build ------------------------------------------------------------- */

/* Return the release, such as "2026.1.0-CL1".

   Both work before any start.

   Prints      vek_version also prints what identifies this build, to the
               process's standard output and not through the core library.
   Lifetime    Static, for the life of the process.  */
VEK_API const char *vek_version(void);
VEK_API const char *vek_build_version(void);

#ifdef __cplusplus
}
#endif

#endif
