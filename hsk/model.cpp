// The loaded model: one object with at most one string, its list of plug-ins.

#include "hsk.h"
#include "hsk_control.h"

#include <stdio.h>
#include <string.h>

static const int root_handle = 1;
static const int model_handle = 2;
static const int list_handle = 3;

static_assert(HSK_PLUGIN_LIST_SIZE <= HSK_STRING_SIZE);

static const char list_name[] = HSK_LIST_NAME;

static bool model_loaded = false;
static bool lookup_active = false; // between ac_lookup_begin and ac_lookup_done
static bool list_present = false;
static char plugin_list[HSK_PLUGIN_LIST_SIZE];

// Holds a line with the longest list, its keyword and some spaces around it.
static char line[HSK_PLUGIN_LIST_SIZE + 256];

enum line_kind { LINE_OTHER, LINE_LIST, LINE_TOO_LONG };

static bool is_space(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// Reads a line and removes its comment.  Returns false at the end of the file.
// The part of a line that exceeds the buffer is discarded, so that it is not
// parsed as a line of its own.
static bool read_line(FILE *file)
{
    if (!fgets(line, sizeof line, file))
        return false;
    bool complete = strchr(line, '\n') != nullptr;
    for (int rest = 0; !complete && rest != '\n' && rest != EOF;)
        rest = getc(file);
    line[strcspn(line, "!")] = '\0';
    return true;
}

static void trim_trailing_space(char *string)
{
    size_t length = strlen(string);
    while (length > 0 && is_space(string[length - 1]))
        string[--length] = '\0';
}

// Copies the list, if the line has one, into `plugin_list`.
static line_kind parse_line()
{
    bool truncated = strlen(line) == sizeof line - 1;
    trim_trailing_space(line);
    const char *word = line + strspn(line, " \t");
    const size_t name_length = sizeof list_name - 1;
    if (strncmp(word, list_name, name_length) != 0)
        return LINE_OTHER;
    const char *list = word + name_length;
    if (*list && !is_space(*list))
        return LINE_OTHER;
    list += strspn(list, " \t");
    if (truncated || strlen(list) >= sizeof plugin_list)
        return LINE_TOO_LONG;
    memcpy(plugin_list, list, strlen(list) + 1);
    return LINE_LIST;
}

// Returns what hsk_load_model does.  A directory opens but can't be read, which
// ferror() reports.
static int read_model(FILE *file)
{
    while (read_line(file)) {
        line_kind kind = parse_line();
        if (kind == LINE_TOO_LONG)
            return 2;
        if (kind == LINE_LIST)
            list_present = true;
    }
    return ferror(file) ? 1 : 0;
}

int hsk_load_model(const char *path)
{
    model_loaded = false;
    list_present = false;
    FILE *file = path ? fopen(path, "r") : nullptr;
    if (!file)
        return 1;
    int result = read_model(file);
    fclose(file);
    model_loaded = result == 0;
    return result;
}

int ac_tavik_root()
{
    return root_handle;
}

void ac_lookup_begin(int root, int type)
{
    lookup_active = root == root_handle && type == HSK_TYPE_MODEL;
}

int ac_lookup_object(int)
{
    return lookup_active && model_loaded ? model_handle : 0;
}

void ac_lookup_done()
{
    lookup_active = false;
}

int ac_lookup_by_name(int model, int type, const char *name)
{
    bool found = model_loaded && list_present && model == model_handle && type == HSK_TYPE_STRING &&
                 name && strcmp(name, list_name) == 0;
    return found ? list_handle : 0;
}

void ac_get_string(int object, int attribute, int, char *buffer)
{
    bool known = object == list_handle && attribute == HSK_ATTRIBUTE_STRING;
    const char *value = known ? plugin_list : "";
    memcpy(buffer, value, strlen(value) + 1);
}
