/* vek.h - where does a file of a given kind live?

   The interface of the file-location library.  It serves one process that
   calls it from one thread at a time; nothing here is re-entrant.

   Rules that hold for every operation, so that the entries below need not
   repeat them:

   Texts    A text ends with a NUL and uses "/" as its separator inside the
            library.  A path text has at most VEK_PATH_SIZE - 1 characters.
            A null text counts as the empty text.  No text is ever used as a
            format.  A `const char *` argument is not changed.  A `char *`
            argument may be: its entry says how.  Operations that turn
            separators or clean them work in the memory they are given and
            never lengthen it.  Operations that expand "$NAME" in place need
            VEK_PATH_SIZE bytes at the text.
   Results  A text result points into a record, into a static buffer or to
            the caller's own text.  Only the block of vorn_vek_search_file
            (and of db_search, which hands it on) belongs to the caller.
            Records live as long as the process, but for a database's own,
            which vorn_vek_db_remove releases; those of its tables stay.  A
            static result lives until a call that its entry names.  "Nothing"
            is the empty text, never a null pointer, but for
            vorn_vek_get_write_default, vek_strrstr and
            vorn_vek_tmp_file_path.  Test the content of a result, not its
            address, and do not write to it.
   Limits   A path or name that does not fit its result gives the empty text,
            never a cut one, because a cut path can name another file.  (What
            F2C_DB_SEARCH is given is cut, as its entry says.)
   Levels   A level is a database's place in the search order, from 1.
   Codes    Unless its entry says otherwise, 0 is success.
   Names    Databases, classes and extensions compare without regard to case,
            but for the reserved name "shared", which is exact.
   Output   Lines for the user leave through the core library: "ERROR: ...",
            "WARNING: ..." and "ABORT: ..." for reports, plain lines as they
            are.  An entry says what its operation prints; an operation that
            rests on others named in its entry prints what they print, too.
   Memory   When memory runs out the operation reports "ABORT: malloc_failure",
            leaves everything as it was and gives its failure result.  A
            report for which there is no memory is not printed.  */

#ifndef VEK_H
#define VEK_H

/* ---- Sizes ------------------------------------------------------------

   In bytes, the terminator included.  */

#define VEK_PATH_SIZE 268      /* a path text */
#define VEK_CFG_PATH_SIZE 267  /* the path of a configuration file */
#define VEK_CFG_FILE_COUNT 3   /* configuration files of one start */
#define VEK_DB_NAME_SIZE 31    /* a database's name */
#define VEK_CLASS_SIZE 31      /* a file class */
#define VEK_TBL_DIR_SIZE 36    /* a table's directory name */
#define VEK_TBL_PATH_SIZE 308  /* a table's whole directory */
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

/* ---- Messages --------------------------------------------------------- */

/* Print "ERROR: <text>", "WARNING: <text>" or "ABORT: <text>" as one entry,
   whatever the host's message settings are; they are put back afterwards.
   `caller` names the calling routine and is not shown.  vek_abort ends
   nothing: it prints and returns.  Result of the first two: 0.  */
VEK_API int vek_err(const char *caller, const char *text);
VEK_API int vek_warn(const char *caller, const char *text);
VEK_API void vek_abort(const char *caller, const char *text);

/* ---- Session ---------------------------------------------------------- */

/* The host's entry to a session.  `name` is the empty text or the product's
   name for a product session, the name of a plug-in to add to it, or the word
   "f2c_vorn_vek_cfg_env_read" for a solver run.  The first call fixes the
   product's name, and one of a solver run solver mode.  For the product, the
   ENVIRONMENT statements of its shared, site and private file are taken into
   the process environment by vek_env_read.  Then a session is started with
   vorn_vek_init; a solver run instead takes the ENVIRONMENT statements of the
   plug-ins that the model names, and db_search starts it later.
   Result: that of vorn_vek_init; in a solver run 1 if a file did not open or
   its last setting failed, else 0; -1, with an abort line, if the name has
   VEK_START_NAME_SIZE or more characters or vek_chk_cfg_files does not give 0;
   the next call then is as the first.
   A solver run has the host register a plug-in's paths before
   KLV_USER_PLUGIN_DIR is searched for its file.
   Prints a blank line at the first call of a solver run, two reports when a
   file of the product or its last setting failed, a warning for a list of
   plug-ins that is too long, and at the end of the first call of a solver run
   what printenvars prints.  */
VEK_API int vorn_vek_cfg_env_read(const char *name);

/* The same for a solver run.  */
VEK_API int F2C_VORN_VEK_CFG_ENV_READ(void);

/* Start the session (first call) or add a plug-in's files to it (later
   calls).  `name` is the short name of the product or plug-in, shorter than
   VEK_START_NAME_SIZE; vek_set_product_name must have run before.  The first
   sets the number of databases to 0, even if it finds no files.  The files
   that vek_chk_cfg_files finds are read in the order shared, site, private
   (the private file at the first start only) by vek_cfg_read, then missing
   table directories are made as by vek_upd_vek_tbls and the outcome is tested.
   Under a name other than the product's, outside solver mode, vek_env_read
   takes each file's ENVIRONMENT statements just before the file is read.
   Result: 0 started, or nothing to do because there is no shared file and
   interface mode is off; 1 no database, a database without tables, or
   differing numbers of tables; -1 a fatal condition, or no default writable
   database outside solver mode.
   Prints a blank line at a first start under another name, two warnings when a
   file or a table directory had a fault, a report for each fault of the
   outcome, and a report of the fatal condition.  Shows an alert, and reports
   its text, when there is no default writable database outside solver mode.  */
VEK_API int vorn_vek_init(const char *name);

/* Find the configuration files of `name`.  Each output has VEK_PATH_SIZE
   bytes, does not overlap `name`, and may be null if it is not wanted.
   `shared` takes each candidate in turn.  `site` becomes empty when there is
   no site file.  A missing private file is created.  No path of more than
   VEK_CFG_PATH_SIZE - 1 characters is taken for a file that exists.
   Result: 0 all three are set; 1 a fatal condition, reported; 2 there is no
   shared file and interface mode is off: nothing is printed, and `site` and
   `private_file` are untouched.
   Prints also what an update of the private file may print (see there), when
   that is missing and can't be created.  */
VEK_API int vek_chk_cfg_files(const char *name, char *shared, char *site, char *private_file);

/* Take the product's short name from KLV_PRODUCT_NAME, at most its first 15
   characters, or "vorn" when that is unset.  Only the first call acts.  */
VEK_API void vek_set_product_name(void);

/* The short name, empty before vek_set_product_name.  Static, for the whole
   life of the process.  */
VEK_API const char *vek_product_name(void);

/* 1 if `text` is exactly the product's short name, letter case included;
   else 0.  */
VEK_API int vek_product_name_is(const char *text);

/* The product's name as people read it, such as "TAVIK/Vorn".  Static.  */
VEK_API const char *vek_product_string(void);

/* Solver mode, 0 at first.  Only the first call of the setter acts.  */
VEK_API void vek_set_solver_mode(int mode);
VEK_API int vek_solver_mode(void);

/* Interface mode, 0 at first; the setter makes it 1 for good.  With it a
   missing shared file is fatal, and db_search leaves starting to the host.  */
VEK_API void vek_set_interface_mode(void);
VEK_API int vek_get_interface_mode(void);

/* The word for the system, "nt" on every system: hosts compare with it.
   Static.  */
VEK_API const char *vorn_vek_get_os(void);

/* ---- Configuration files ---------------------------------------------- */

/* Read one configuration file.  `cfg_index` is the number that its records
   carry; the session's private file has a number of its own, and some
   statements are refused there only.  "$" in `path` is not expanded.
   Result: 0 no statement was refused, those for test rigs not counted;
   otherwise the code of the last refused one, 1 to 6.  1 comes also for a file
   that does not open, or can't be read to its end.
   Devices that give bytes without end do not open.
   A statement has at most 266 characters, its comment not counted; of a line
   with a comment, what stands behind the 267th is read as a line of its own.
   Prints "Reading configuration file '<path>'", or a report that it does not
   open or end; one or two reports for each refused statement, with line number
   and path, behind those of vek_db_read, vek_set_write_db, vek_tbl_read,
   vek_propfile_read and vek_testrig_read; plain lines of advice for
   discontinued statements; a closing report if the result is a code.  */
VEK_API int vek_cfg_read(const char *path, int cfg_index);

/* Take the ENVIRONMENT statements of one configuration file into the process
   environment.  `path` is expanded in place as by vek_eval_str.
   Result: 1 the file does not open or can't be read to its end; otherwise that
   of the last setting, 0 if there was none.  A name has at most 60 characters,
   a value 180 before it is expanded by vek_eval_str; lines are read in pieces
   of 255.
   Prints a line with the path in solver mode, a report if the file does not
   open or end, and two reports for each bad statement.  */
VEK_API int vek_env_read(char *path);

/* ---- Private file -----------------------------------------------------

   The user's private configuration file is the one that is also written: when
   a start does not find it, when databases are added or removed or the default
   for writing is set, and when the user saves.

   The new text is written to a file of its own beside the private file
   (".vek-" and numbers), synced, and renamed over it.  So the old text or the
   new one stands under the name at every moment, for every reader, after a
   kill, a power cut or on a full disk.  Mode, owner and group stay; a symbolic
   link is followed.  Where a new file would lose something of the user's (other
   hard links, an owner that can't be set, an access list or extended
   attributes) or can't be created there, the old file is written over instead.
   Then a copy of it stands beside it as "<file>.vek-previous" meanwhile, or,
   where nothing can be created, in /var/tmp.

   Updates lock the file against each other and wait at most 10 seconds.
   Readers do not wait.  If another program has changed the file meanwhile, the
   update begins again, at most four times.

   What an update may print:
   - a warning, once a process, when HOME is needed and not set;
   - two warnings, once a process, when the file does not open for writing;
   - "ERROR: Cannot create file '<backup>' : <reason>" when the backup could
     not be made: an older one stays, and an update goes on without;
   - the reports of vorn_vek_copy_file2file and vorn_vek_delete_file;
   - "ERROR: cannot open file <path>";
   - "ERROR: Private cfg file <path> could not be written: <reason>", after
     which the file has its old text (its new one if only the directory could
     not be synced);
   - "ERROR: The previous text is kept in file <path>." when the old text could
     not be restored, or a killed update has left its copy; at each first start
     and later update, too, and none is made as long as that file is there;
   - "WARNING: Database '<name>' cannot be kept in the private cfg file; it is
     known in this session only.", and the same of a "Table of class", a
     "Property file of class" and a "Test rig of class", once each: a statement
     could not hold it.  */

/* Bring the private file up to date with the session, after a backup of it (a
   file without text does not replace a backup that has some): its
   DATABASE_ORDER, DEFAULT_WRITE_DB and ENVIRONMENT
   lines get their present values and all other lines stay, byte by byte.  An
   ENVIRONMENT line stays as it is when its variable is not set or has a value
   that the line could not hold (blank, of more than 180 characters, with "!"
   or a line end, or a whole line of more than 254), and so does
   DEFAULT_WRITE_DB while no default is set.  Lines count in pieces of 255
   characters.
   With the tag "vorn_vek_db_add" the database `name` is also put before the
   first DATABASE line, and with "vorn_vek_db_remove" the lines of the database
   that is spelled `name` become comments; these are what vorn_vek_db_add and
   vorn_vek_db_remove use.  "vorn_sav_cfg" writes the file as a save does,
   "vek_chk_cfg_files" as a first start does, over its text.  Tags compare
   without regard to case.
   Result: 1 written, or KLV_UPDATE_CFG is "no"; 0 not, with a report but for
   what is reported once a process.  */
VEK_API int vorn_wrt_cfg(const char *tag, const char *name);

/* Ask the user, by an alert, how to save, then write the private file anew
   from the session: the user's databases, the default for writing, the user's
   tables, property files and test rigs, with KLV_VEK_SEARCH at "yes" the order
   of all databases, and the ENVIRONMENT lines of the old file with their
   present values, or as they were where vorn_wrt_cfg leaves them.  Each line
   ends in a newline ("\r\n" on Windows).  All else is lost.
   What a statement can't hold is left out with a warning: "!", white space in
   a name, a class, a test rig or the alias of a property file, a property file
   that its alias does not lead to, and what makes the statement longer than
   266 characters, also with single spaces between its words.
   KLV_UPDATE_CFG does not matter.
   Result: 1 written; 0 not, or an answer that the alert does not offer;
   -1 cancelled.  With the answer "Backup" nothing is written unless there is a
   whole backup, but for a file whose name ends in "q"; prints the backup's two
   lines and one more.
   Overwrites the buffers that vorn_vek_path2alias and vorn_vek_input2full
   overwrite.  */
VEK_API int vorn_sav_cfg(void);

/* ---- Text ------------------------------------------------------------- */

/* Expand each "$NAME" of `text` in place.  A name ends at "/" or at the end
   of the text.  A variable that is unset, more than 266 characters with its
   value in its place or a 65th replacement makes the text empty, with two
   warnings that name the variable.  Extra separators go behind each
   replacement; a text without "$" is untouched.  Result: `text`.  */
VEK_API char *vek_eval_str(char *text);

/* Make each run of "/" one, and remove one at the end, in place.  A scheme
   ("klvds://", "file://", "file:////") and the first character stay as they
   are.  Result: `text`.  */
VEK_API char *vek_rm_extra_separators(char *text);

/* Turn each "\" into "/", or each "/" into "\", in place, up to the first
   line feed.  vorn_vek_runtime_path_port is the first under its older name.
   Result: `text`.  */
VEK_API char *vorn_vek_nt2unix_path(char *text);
VEK_API char *vorn_vek_runtime_path_port(char *text);
VEK_API char *vorn_vek_unix2nt_path(char *text);

/* The long form of a path with shortened names in it, in a static buffer that
   the next call overwrites, also one by vek_db_read, vorn_vek_path2alias or
   what rests on them, for a path with "~"; `path` itself where there is no
   other form.  */
VEK_API const char *_vek_getlongpath(const char *path);

/* Compare without regard to case, the whole texts or at most `count`
   characters, of which there may be none.  Result: 0 equal; else the
   difference of the first two characters that differ, both in upper case and
   unsigned.  */
VEK_API int vek_strcasecmp(const char *first, const char *second);
VEK_API int vek_strncasecmp(const char *first, const char *second, int count);

/* The last place in `text` at which `part` begins, null if there is none.
   An empty part gives the end of the text.  */
VEK_API char *vek_strrstr(const char *text, const char *part);

/* Copy `text` to `upper`, "a" to "z" in upper case and every other byte as it
   is.  `upper` must have room for the text and its terminator.  */
VEK_API void vek_str_copy_to_upper_case(const char *text, char *upper);

/* 1 if `path` opens for reading, else 0.  A directory does not count.  */
VEK_API int vek_file_exists(const char *path);

/* ---- Databases -------------------------------------------------------- */

/* Add the database of a DATABASE statement, "DATABASE <name> <path>": the
   first word is not looked at, the path is the rest of the line.  "$NAME" in
   the path is expanded.  A missing directory is made, one level only.  The
   new database gets all tables that the others have.
   Result: 0 added; 1 name or path missing, or no memory; 2 the directory can
   be neither entered nor made; 3 the name is taken; 4 the name has more than
   30 characters; 6 the name "shared" at the private file's index.  5 is not
   used.  1 comes also, in silence, while the host has set a count that the
   list does not have.  Only a missing word and a long name are refused before
   the directory is made.
   Prints nothing but the warnings of vek_eval_str and "malloc_failure".  */
VEK_API int vek_db_read(const char *statement, int cfg_index);

/* 1 if the directory can be entered, else 0.  0 also for every directory while
   the current one is gone or has a path of 260 or more characters.  */
VEK_API int vorn_vek_db_exists(const char *path);

/* 1 if the database could be written to when it was last probed, 0 if not or
   if there is no such database.  */
VEK_API int vorn_vek_db_iswritable(const char *name);

/* Make `name` the default database for writing.  The first one then calls
   vorn_wrt_cfg, whose result does not count.
   Result: 0 done; 1 refused, with a report, because there is no such database
   or it is not writable, or no memory.  */
VEK_API int vorn_vek_set_write_default(const char *name);
VEK_API int vorn_vek_set_write_default_no_cfg_update(const char *name);

/* The name of the default database for writing, spelled as it was set; null
   while none is set.  The next setting overwrites the text in place.  */
VEK_API const char *vorn_vek_get_write_default(void);

/* As vorn_vek_set_write_default_no_cfg_update, from a DEFAULT_WRITE_DB
   statement: the word behind the first.  Result: 0 done; 1 refused, with a
   report, or no word there, without one.  */
VEK_API int vek_set_write_db(const char *statement);

/* The number of databases.  The setter overwrites the count and touches
   nothing else.  Databases behind a lower count are hidden, and the next one
   added takes the place of the first of them.  With a count that the list does
   not have, nothing is found behind its last database, and no database can be
   added until the count is right again.  */
VEK_API void vek_set_number_of_veks(int count);
VEK_API int vorn_vek_get_number_of_veks(void);

/* The level of a database; -1 if there is none of that name.  */
VEK_API int vorn_vek_db2level(const char *name);

/* The name of the database at a level, a text in its record.  A level below 1
   or above the count gives the empty text and one report.  */
VEK_API const char *vorn_vek_level2db(int level);

/* Add a database of the user's by vek_db_read, make its table directories by
   vek_upd_vek_tbls, move it to `level` by vorn_vek_db_reorder and call
   vorn_wrt_cfg, whose result does not count.
   Result: 0 added, also when it stays at the end of the list, with a report;
   otherwise nothing is added: 1, with a report, for a name or path that is
   empty or too long, else the code of vek_db_read, with a report for 2, 3 and
   6.  A name with white space adds a database of its first word, at a path
   that begins with the rest.
   The next session finds it in the private file if that has a DATABASE line
   and can hold it: a name or path with "!", or one that makes the statement
   longer than 266 characters ("DATABASE", name and path with single spaces),
   is known in this session only, with a warning.  */
VEK_API int vorn_vek_db_add(const char *name, const char *path, int level);

/* Remove a database from the list, not from the disk, and call vorn_wrt_cfg,
   whose result does not count.  The levels of those behind it become lower.
   `name` may be the text of the record that goes.
   Result: 0 removed; 1 refused, with a report: it is the default for writing,
   or there is none of that name.  */
VEK_API int vorn_vek_db_remove(const char *name);

/* Move a database to another level; those between close up.
   Result: 0 moved, or there already; 1 refused, with a report: a level below 1
   or above the count, or no such database.  1 comes also, in silence, for a
   level that only a count set by the host promises.  */
VEK_API int vorn_vek_db_reorder(const char *name, int level);

/* Put the databases of a DATABASE_ORDER statement, their names with commas
   between them behind the first word, to the front in that order; "shared"
   also stands for "<product>_shared".  The reader of configuration files calls
   this only while KLV_VEK_SEARCH is "yes".
   Result: 0 done; 1 no names; 2 some name is not defined, and the others are
   in order.  Prints nothing.  */
VEK_API int vek_db_setorder(const char *statement);

/* Write the database report to a file, which is emptied first.  Every database
   is probed anew, which is what vorn_vek_db_iswritable tells from then on.
   Result: 0 written, or the path is empty; 1 it does not open (reported).  */
VEK_API int vorn_vek_db_info(const char *path);

/* ---- Tables ----------------------------------------------------------- */

/* Add the table of a TABLE statement, "TABLE <class> <directory> <ext>", to
   every database.
   Result: 0 added, or a class or extension that is known already, passed over
   in silence; 1 words missing, a word too long (two reports), no database
   (two reports) or no memory; 2 class or extension known already, at the
   private file's index.  */
VEK_API int vek_tbl_read(const char *statement, int cfg_index);

/* Append a table to the one database at `position`, counted from 0.  A text
   too long for its field, or a position that no database has, stores
   nothing.  */
VEK_API void vek_tbl_add(int position, const char *file_class, const char *dir, const char *ext,
                         int cfg_index);

/* What belongs to a class or an extension: a text in a record, or the empty
   text.  An extension may carry a version, ";" and what follows, which is
   not compared.  */
VEK_API const char *vorn_vek_class2ext(const char *file_class);
VEK_API const char *vorn_vek_class2tbl(const char *file_class);
VEK_API const char *vorn_vek_ext2class(const char *ext);
VEK_API const char *vorn_vek_ext2tbl(const char *ext);

/* The directory alias, "<database>/directory", of an extension's table at a
   level: a text in a record, or the empty text.  For an empty extension and
   for "*" it is "<database>", in a static buffer that the next call
   overwrites.  A level out of range gives the empty text.  */
VEK_API const char *vek_ext2alias(const char *ext, int level);

/* The table directory of an extension or a class at a level: a text in a
   record, or the empty text.  A level below 1 or above the count is
   reported.  */
VEK_API const char *vorn_vek_ext2path(const char *ext, int level);
VEK_API const char *vorn_vek_get_tbl_path(const char *file_class, int level);

/* As vorn_vek_get_tbl_path at the default database for writing; while none is
   set, the report of level -1 and the empty text.  */
VEK_API const char *vorn_vek_get_def_wri_tbl(const char *file_class);

/* ---- Table directories ------------------------------------------------ */

/* Make the table directories that are missing on disk.  A selector from 1 on
   is a level and -1 all databases: each gets the tables whose configuration
   index is not above its own.  -2 is the databases of the private file, each
   with all tables.  Any other selector selects nothing.
   Result: 1 if a directory could not be made, with three warnings for each;
   else 0.  */
VEK_API int vek_upd_vek_tbls(int selector);

/* The same at the end of a start, as with -1 for the first and as with -2 for
   a later one.  `cfg_files` holds the start's files, which are not changed;
   the first of the two keeps them at its first call only.  */
VEK_API int vek_upd_all_vek_tbls(char (*cfg_files)[VEK_CFG_PATH_SIZE]);
VEK_API int vek_upd_plg_vek_tbls(char (*cfg_files)[VEK_CFG_PATH_SIZE]);

/* Make a new database directory with all table directories on disk.  The list
   of databases is not touched.
   Result: 1 made, also when some table directories were not (reported);
   0 refused, with one report: it exists already, or can't be made.  */
VEK_API int vorn_cre_dat(const char *path);

/* Write the table report to a file, which is emptied first.
   Result: 0 written, or the path is empty; 1 it does not open (reported).  */
VEK_API int vorn_vek_tbl_info(const char *path);

/* ---- Defaults of a class ----------------------------------------------

   Here classes compare exactly, letter case included.  A class of more than 30
   or a value of more than 267 characters is refused.  */

/* Take a PROPFILE statement, "PROPFILE <class> <path>": the path, in any form
   of name, is expanded by vek_eval_str and must lead to a file; a name in the
   database "shared" may also lead to the product's own shared database.
   Result: 0 taken; 1 words missing or too long, or no memory; 2 there is no
   such file.  */
VEK_API int vek_propfile_read(const char *statement, int cfg_index);

/* Take a TESTRIG statement, "TESTRIG <class> <name>"; the name is kept as it
   is written.  Result: 0 taken; 1 words missing or too long, or no memory.  */
VEK_API int vek_testrig_read(const char *statement, int cfg_index);

/* Set the default of a class for this session.  `file` is a name in any form
   and is expanded in place by vek_eval_str, and then "\" is turned in it.
   Result: 1 set; 0 not, because there is no such file (silently), because a
   text is too long, or for want of memory.  */
VEK_API int vorn_vek_set_def_propfile(const char *file_class, char *file);
VEK_API int vorn_vek_set_def_testrig(const char *file_class, const char *name);

/* The default of a class, or the empty text: for a property file the result of
   vorn_vek_path2alias, and as short-lived; for a test rig a text in a record,
   which the next setting for the class overwrites.  */
VEK_API const char *vorn_vek_get_def_propfile(const char *file_class);
VEK_API const char *vorn_vek_get_def_testrig(const char *file_class);

/* ---- Path text --------------------------------------------------------

   These look at the text only.  Each result is a static buffer of the
   operation's own, VEK_PATH_SIZE bytes, which the calls named behind "until:"
   overwrite, as does the operation itself.  Operations that rest on those
   named overwrite them, too: F2C_DB_SEARCH what db_search does, and
   vorn_vek_set_def_propfile, vek_propfile_read and with it the reading of
   files and the starts what vorn_vek_input2full does.  A text that is too long
   gives the empty text.  */

/* The directory part, without the last "/".  Turns "\" in `text`.
   until: vorn_vek_input2full, vorn_vek_input2tblpth, vorn_vek_expand2full,
   vorn_vek_search_file, db_search.  */
VEK_API const char *vorn_vek_input2path(char *text);

/* What follows the last "/", or all.  Turns "\" in `text`.
   until: vorn_vek_add_extension, vorn_vek_path2alias, the file operations
   below, what updates the private file, and those of vorn_vek_input2path.  */
VEK_API const char *vorn_vek_input2file(char *text);

/* The file name without its last "." and what follows.  Turns "\" in `text`.
   until: vorn_vek_copy_file2db, and vorn_vek_search_file and db_search when
   they walk the levels.  */
VEK_API const char *vorn_vek_input2base(char *text);

/* What follows the last "." of the whole text, directories included.
   until: vorn_vek_add_extension, vorn_vek_copy_file2db.  */
VEK_API const char *vorn_vek_input2ext(const char *text);

/* The last two components.  Turns "\" in `text`.  until: itself only.  */
VEK_API const char *vek_input2tbl_and_file(char *text);

/* `name` with "\" turned, and with "." and `ext` behind it if its file name
   has no extension.  until: itself only.  */
VEK_API const char *vorn_vek_add_extension(const char *name, const char *ext);

/* ---- Aliases ----------------------------------------------------------

   A file has four forms of name: "klvds://database/directory/file" (URL
   form), "<database>/directory/file" (bracket form), "file://path" (file URL)
   and a plain path.  Where a name is resolved, the database "shared" stands
   for "<product>_shared", except in the product dunmoren.  A name that can't
   be resolved stays a name in its form; nothing here prints.  */

/* The bracket form of a URL form, the path of a file URL, any other text as
   it is: a static buffer, until the next call.  */
VEK_API const char *vorn_vek_standardize_alias(const char *text);

/* The directory of a directory alias, which is a name without its file: the
   table's directory, or the database's if there is no such table: a text in a
   record.  A text with no such database, or of more than 267 characters, is
   given back itself.  A file URL in `text` is overwritten by its path, and
   `text` is the result.  */
VEK_API const char *vorn_vek_alias2path(char *text);

/* The bracket form of a file's real path: a static buffer of
   VEK_TBL_PATH_SIZE bytes, until the next call; `text` itself if no table
   directory holds the file.  Turns "\" in `text`.  */
VEK_API const char *vorn_vek_input2tblpth(char *text);

/* The real path of a name in any form: a static buffer, until the next call
   of it, of vorn_vek_expand2full, vorn_vek_search_file, db_search or what
   rests on these (see "Path text").  Turns "\" in `text`.  */
VEK_API const char *vorn_vek_input2full(char *text);

/* As vorn_vek_input2full, in a static buffer of its own until its next call,
   once KLV_VEK_EXPAND_PATH has been seen to be "yes"; before that, `text`
   itself, untouched.  */
VEK_API const char *vorn_vek_expand2full(char *text);

/* The way back: the name of a real path, "klvds://database/directory/file" or
   "klvds://database/file".  A path deeper inside a table's directory stays a
   path, and one that is neither in a table nor directly in a database becomes
   a file URL; a URL or bracket form of a database stays as it is, and a file
   URL counts as a path.  Always a static buffer, until the next call of it, of
   vorn_vek_get_def_propfile, of a file operation, or of one that updates the
   private file.  A URL that does not fit leaves the path.  Turns "\" in
   `text`.  */
VEK_API const char *vorn_vek_path2alias(char *text);

/* ---- File search ------------------------------------------------------ */

/* Find the file of a name in any form.  It is there if it opens for reading.
   A name in the database "shared" has a second place, "<product>_shared".
   With KLV_VEK_SEARCH at "yes" a file not found so far is looked for by base
   name and the extension of `file_class` in the class's table at each level
   from `level` on.  Turns "\" in `name`.
   Result: a block that the caller releases with free(), holding the real
   path; the empty text, which is static and must not be released, if the file
   is not found.  Prints only "Malloc failed. Unable to continue search.".  */
VEK_API char *vorn_vek_search_file(const char *file_class, char *name, int level);

/* ---- File operations --------------------------------------------------

   They take real paths, not aliases, and name files by alias in what they
   print; a path too long for an alias is named itself.  Result: 0 done, 1
   failed.  A failure is reported, with the system's text where the system
   refused.  "\" is turned in `char *` paths: by those that delete and rename
   before they act, by the others when the path is named in a message.
   The variants _silent print no success lines.  Pipes are not written to, and
   devices that give bytes without end are not read.  */

/* Copy a file; an existing target is emptied first.  Two paths that are equal
   without regard to case, or that name one file, are refused, and so is a
   target of more than 267 characters.  That a write or a read stops early is
   not noticed.  Prints two lines if the target opens afterwards.  */
VEK_API int vorn_vek_copy_file2file(char *source, char *target);
VEK_API int vorn_vek_copy_file2file_silent(char *source, char *target);

/* Copy a file into a database, into the table of its extension.  An extension
   that no table has leads to the root directory of the file system.  An
   unknown database is refused.  Turns "\" in `source`.  */
VEK_API int vorn_vek_copy_file2db(char *source, const char *database);

/* Delete a file, never a directory.  Prints a line unless the file opens all
   the same afterwards.  */
VEK_API int vorn_vek_delete_file(char *path);
VEK_API int vorn_vek_delete_file_silent(char *path);

/* Rename a file; an existing target is left alone and refused.  Prints two
   lines on success.  */
VEK_API int vorn_vek_rename_file(char *old_path, char *new_path);

/* Copy a file to its backup, whose name has "q" for the last character.  The
   backup is written to a file beside it, synced, and renamed over an older one,
   which stays if that fails.  It is as private as the file.  A file that does
   not open fails without a report.  */
VEK_API int vek_backup_file(char *path);
VEK_API int vek_backup_file_silent(char *path);

/* Append a file to another, which is created if need be, also when the source
   is missing.  A file is not appended to itself.  Prints nothing.  */
VEK_API int vorn_vek_append_file2file(const char *source, const char *target);

/* The directory for temporary files, "/" at its end: static, the same at every
   call (a child of a process has its own).  Null if there is none.  */
VEK_API const char *vorn_vek_tmp_file_path(void);

/* "/".  Static.  */
VEK_API const char *vorn_vek_get_file_separator(void);

/* Does nothing.  Result: 0.  */
VEK_API int vorn_vek_inherit_permissions(void);

/* ---- Solver ----------------------------------------------------------- */

/* The solver's search.  Unless interface mode is on, the first call reads the
   model's list of plug-ins and makes a start for each name in it.  A model
   without the list has the product of KLV_PRODUCT_NAME started, if that is
   vorn, skarn, dunmoren, quorvalind or belthar, in any letter case.  Without
   either, there are no databases to search: a name is then tested as a plain
   path.  While QNS_PRODUCT_NAME is "ZAPT", every name is taken for found.
   `found` becomes 1 or 0.  Turns "\" in `name` when databases are searched.
   Result: `name` itself for a plain path, found or not, and for what is taken
   for found; otherwise that of vorn_vek_search_file.  Only `found` says
   whether the file is there, and only a result that is neither `name` nor
   empty is for the caller to release.
   The call that makes the starts prints a blank line, what they print, a line
   for each name of 40 or more characters, for a list that is too long, or
   missing where a product is started in its place, and for each start that
   failed, and a blank line.  Without databases, a name that looks like an
   alias and is not found gives two reports.  */
VEK_API char *db_search(char *name, const char *file_class, int *found);

/* The same for Fortran.  `name` and `file_class` end with a NUL; of more than
   267 characters the first 266 count, and of all only what stands before the
   first blank.  `result` takes at most VEK_PATH_SIZE bytes, `length` its
   characters.  The sizes that a Fortran caller passes are not read.  */
VEK_API void F2C_DB_SEARCH(char *result, int result_size, int *length, int *found, const char *name,
                           int name_size, const char *file_class);

/* Tell the user which variables of the suite's catalogue are set in the
   process, with their values and what they do.  Prints nothing when none is
   set.  */
VEK_API void printenvars(void);

/* ---- Build ------------------------------------------------------------ */

/* The release, such as "2026.1.0-CL1": a static text.  Either works before any
   start.  The first also prints what identifies this build, to the process's
   standard output and not through the core library.  */
VEK_API const char *vek_version(void);
VEK_API const char *vek_build_version(void);

#ifdef __cplusplus
}
#endif

#endif
