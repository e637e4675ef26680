// Expanding environment variables in the values of configuration files.

#include "host/environment.h"
#include "host/message.h"
#include "text/text.h"

#include <cstring>

constexpr size_t expanded_size = 267; // of a string after a replacement
constexpr int max_replacements = 64;  // enough for any sensible value; ends a cycle

static void warn(const char *what, const char *variable)
{
    vek_put_message(what, "WARNING");
    report(REPORT_WARNING, "vek_eval_str", "  $%s", variable);
}

// Replace the variable at `dollar` with its value.  On failure, after a warning, the
// contents of `text` are unspecified.
static bool expand_one(char *text, char *dollar, bool is_allowed)
{
    const char *name = dollar + 1;
    char *slash = strchr(dollar, '/');
    *dollar = '\0';
    if (slash != nullptr)
        *slash = '\0';
    const char *value = env_value(name);
    if (value == nullptr) {
        warn("The following variable could not be found in the runtime environment:", name);
        return false;
    }
    char joined[expanded_size];
    const char *separator = slash == nullptr ? "" : "/";
    const char *tail = slash == nullptr ? "" : slash + 1;
    if (!is_allowed || !text_join(joined, {text, value, separator, tail})) {
        warn("Expanding the following variable in the runtime environment causes a "
             "'line-too-long' error:",
             name);
        return false;
    }
    text_copy(text, VEK_PATH_SIZE, vek_rm_extra_separators(joined));
    return true;
}

char *vek_eval_str(char *text)
{
    text = text_or_empty(text);
    int count = 0;
    for (char *dollar = strchr(text, '$'); dollar != nullptr; dollar = strchr(text, '$')) {
        ++count;
        if (!expand_one(text, dollar, count <= max_replacements))
            text[0] = '\0';
    }
    return text;
}
