// The default property file and the default test rig of a class.

#include "host/message.h"
#include "memory/array.h"
#include "names/names.h"
#include "registry/registry.h"
#include "text/text.h"

#include <cstdlib>
#include <cstring>

vek_dflt_list *vek_propfile_defaults;
vek_dflt_list *vek_testrig_defaults;

// How the two lists differ.
struct dflt_kind {
    vek_dflt_list **list;
    int first_slots;
    int more_slots;
    const char *init_caller;
    const char *add_caller;
};

static const dflt_kind propfiles = {&vek_propfile_defaults, 20, 5, "vek_propfile_init",
                                    "vek_propfile_add"};
static const dflt_kind testrigs = {&vek_testrig_defaults, 4, 2, "vek_testrig_init",
                                   "vek_testrig_add"};

static vek_dflt_rec *find_default(const dflt_kind &kind, const char *file_class)
{
    const vek_dflt_list *list = *kind.list;
    file_class = text_or_empty(file_class);
    for (int i = 0; list != nullptr && i < list->count; ++i)
        if (strcmp(list->entries[i]->class_, file_class) == 0)
            return list->entries[i];
    return nullptr;
}

static bool ensure_list(const dflt_kind &kind)
{
    if (*kind.list != nullptr)
        return true;
    *kind.list = static_cast<vek_dflt_list *>(calloc(1, sizeof(vek_dflt_list)));
    if (*kind.list == nullptr)
        report_malloc_failure(kind.init_caller);
    return *kind.list != nullptr;
}

static bool reserve_entry(vek_dflt_list *list, const dflt_kind &kind)
{
    const int step = list->capacity == 0 ? kind.first_slots : kind.more_slots;
    return array_reserve(&list->entries, &list->capacity, list->count, step);
}

static bool fits(const char *file_class, const char *value)
{
    return strlen(file_class) < VEK_CLASS_SIZE && strlen(value) < VEK_PATH_SIZE;
}

// Returns false if there is no memory, which is reported, or a string is too long.
static bool append_default(const dflt_kind &kind, const char *file_class, const char *value,
                           int cfg_index)
{
    vek_dflt_list *list = *kind.list;
    if (list == nullptr || !fits(file_class, value))
        return false;
    vek_dflt_rec *record = nullptr;
    if (reserve_entry(list, kind))
        record = static_cast<vek_dflt_rec *>(malloc(sizeof *record));
    if (record == nullptr) {
        report_malloc_failure(kind.add_caller);
        return false;
    }
    text_copy(record->class_, file_class);
    text_copy(record->value, value);
    record->cfg_index = cfg_index;
    record->loss_is_reported = false;
    list->entries[list->count++] = record;
    return true;
}

// Set the default of a class.  An entry that exists keeps its position.  Returns
// false if there is no memory, which is reported, or a string is too long.
static bool set_default(const dflt_kind &kind, const char *file_class, const char *value,
                        int cfg_index)
{
    if (!fits(file_class, value) || !ensure_list(kind))
        return false;
    vek_dflt_rec *record = find_default(kind, file_class);
    if (record == nullptr)
        return append_default(kind, file_class, value, cfg_index);
    text_copy(record->value, value);
    record->cfg_index = cfg_index;
    record->loss_is_reported = false;
    return true;
}

void vek_propfile_add(const char *file_class, const char *value, int cfg_index)
{
    append_default(propfiles, text_or_empty(file_class), text_or_empty(value), cfg_index);
}

void vek_testrig_add(const char *file_class, const char *value, int cfg_index)
{
    append_default(testrigs, text_or_empty(file_class), text_or_empty(value), cfg_index);
}

// The fields of a statement, "<keyword> <class> <value>", as terminated strings.
struct dflt_statement {
    bool is_complete;
    bool fits;
    char file_class[VEK_CLASS_SIZE];
    char value[VEK_PATH_SIZE];
};

static dflt_statement parse_default_statement(const char *text)
{
    dflt_statement statement;
    text = text_or_empty(text);
    text_next_word(&text);
    text_span file_class = text_next_word(&text);
    text_span value = text_next_word(&text);
    statement.is_complete = value.length > 0;
    bool class_fits = text_copy(statement.file_class, file_class);
    statement.fits = text_copy(statement.value, value) && class_fits;
    return statement;
}

// Returns the path of the file that a name leads to.  If that file does not exist,
// the name is looked for in the product's shared database or, if it is not in
// "shared", its path is resolved once more as a name.  Returns the empty string if
// no file is found.
static const char *existing_file(char *name)
{
    char second[VEK_PATH_SIZE];
    const char *path = vorn_vek_input2full(name);
    if (vek_file_exists(path) != 0)
        return path;
    if (!product_shared_name(second, name))
        text_copy(second, path);
    path = vorn_vek_input2full(second);
    return vek_file_exists(path) != 0 ? path : vek_empty_text;
}

int vek_propfile_read(const char *text, int cfg_index)
{
    dflt_statement statement = parse_default_statement(text);
    if (!statement.is_complete || !statement.fits)
        return 1;
    vorn_vek_nt2unix_path(statement.value);
    vek_eval_str(statement.value);
    vorn_vek_nt2unix_path(statement.value);
    const char *path = existing_file(statement.value);
    if (*path == '\0')
        return 2;
    return set_default(propfiles, statement.file_class, path, cfg_index) ? 0 : 1;
}

int vek_testrig_read(const char *text, int cfg_index)
{
    dflt_statement statement = parse_default_statement(text);
    bool is_set = statement.is_complete && statement.fits &&
                  set_default(testrigs, statement.file_class, statement.value, cfg_index);
    return is_set ? 0 : 1;
}

int vorn_vek_set_def_propfile(const char *file_class, char *file)
{
    char name[VEK_CLASS_SIZE]; // the class may be in a buffer that is overwritten below
    if (!text_copy(name, text_or_empty(file_class)))
        return 0;
    const char *path = vorn_vek_input2full(vek_eval_str(file));
    bool is_set =
        vek_file_exists(path) != 0 && set_default(propfiles, name, path, vek_private_cfg_index);
    return is_set ? 1 : 0;
}

int vorn_vek_set_def_testrig(const char *file_class, const char *name)
{
    return set_default(testrigs, text_or_empty(file_class), text_or_empty(name),
                       vek_private_cfg_index)
               ? 1
               : 0;
}

const char *vorn_vek_get_def_propfile(const char *file_class)
{
    vek_dflt_rec *record = find_default(propfiles, file_class);
    return record == nullptr ? vek_empty_text : vorn_vek_path2alias(record->value);
}

const char *vorn_vek_get_def_testrig(const char *file_class)
{
    const vek_dflt_rec *record = find_default(testrigs, file_class);
    return record == nullptr ? vek_empty_text : record->value;
}
