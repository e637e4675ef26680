#include "host/plugin_list.h"

#include "host/message.h"
#include "hsk.h"
#include "text/text.h"

#include <cstring>

int plugin_list_find(bool needs_model)
{
    ac_lookup_begin(ac_tavik_root(), HSK_TYPE_MODEL);
    int model = ac_lookup_object(0);
    ac_lookup_done();
    if (model == 0 && needs_model)
        return 0;
    return ac_lookup_by_name(model, HSK_TYPE_STRING, HSK_LIST_NAME);
}

// The names that end within the first 1023 characters.
static text_span whole_names(const char *text)
{
    size_t length = strlen(text);
    if (length < plugin_list_size)
        return {text, length};
    report(REPORT_WARNING, "db_search",
           "Model string 'plugin_list' is longer than %d chars, rest ignored.",
           static_cast<int>(plugin_list_size) - 1);
    length = plugin_list_size - 1;
    while (length > 0 && text[length] != ':')
        --length;
    return {text, length};
}

void plugin_list_fetch(int handle, char (&list)[plugin_list_size])
{
    // ac_get_string does not know the size, so the buffer is far larger than any valid list.
    static char delivered[HSK_STRING_SIZE];

    delivered[0] = '\0';
    ac_get_string(handle, HSK_ATTRIBUTE_STRING, 0, delivered);
    delivered[sizeof delivered - 1] = '\0';
    text_copy(list, whole_names(delivered));
}

bool plugin_list_next(const char **list, char (&name)[plugin_list_size])
{
    text_span next = text_next_token(list, ':');
    text_copy(name, next);
    return next.length > 0;
}
