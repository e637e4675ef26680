#include "config/cfg_text.h"
#include "host/message.h"
#include "platform/durable.h"
#include "platform/platform.h"

#include <cerrno>
#include <cstring>

// Files are read unbuffered, in as few calls as possible.
static void read_all(cfg_text *text, FILE *file)
{
    static char block[32768];
    size_t length = sizeof block;
    setvbuf(file, nullptr, _IONBF, 0);
    while (length == sizeof block && !text->bytes.is_truncated) {
        length = platform_read(file, block, sizeof block);
        builder_append(&text->bytes, block, length);
    }
    text->is_whole = ferror(file) == 0;
}

// False if another process changed the file meanwhile.
static bool read_unchanged(cfg_text *text, FILE *file)
{
    file_state before, after;
    bool is_known = platform_stream_state(file, &before);
    read_all(text, file);
    return !is_known || !platform_stream_state(file, &after) ||
           platform_same_state(&before, &after);
}

// A file that keeps changing is accepted as it is after ten reads.
bool load_text(cfg_text *text, const char *path)
{
    bool is_unchanged = false;
    *text = {};
    for (int left = 10; !is_unchanged && left > 0; --left) {
        builder_release(&text->bytes);
        FILE *file = platform_open_to_read_retrying(path);
        if (file == nullptr)
            return false;
        is_unchanged = read_unchanged(text, file);
        fclose(file);
    }
    if (text->bytes.is_truncated) {
        builder_release(&text->bytes);
        errno = ENOMEM;
        return false;
    }
    return true;
}

void release_text(cfg_text *text)
{
    builder_release(&text->bytes);
}

size_t read_line_chunk(cfg_text *text, char *to, size_t limit, line_form form)
{
    const char *next = text->bytes.bytes + text->pos;
    const char *end = text->bytes.bytes + text->bytes.length;
    size_t length = 0, counted = 0;
    for (char last = '\0'; next < end && counted < limit && last != '\n'; ++next) {
        last = *next;
        bool ends_line = last == '\r' && (next + 1 == end || next[1] == '\n');
        if (!ends_line)
            ++counted;
        if (!ends_line || form == LINE_BYTES)
            to[length++] = last;
    }
    to[length] = '\0';
    text->pos = static_cast<size_t>(next - text->bytes.bytes);
    return length;
}

bool cfg_open(cfg_text *text, const char *path, const char *caller)
{
    if (load_text(text, path))
        return true;
    report(REPORT_ERROR, caller, "Cannot open configuration file '%s': %s", path, strerror(errno));
    return false;
}

bool cfg_close(cfg_text *text, const char *path, const char *caller)
{
    release_text(text);
    if (!text->is_whole)
        report(REPORT_ERROR, caller, "Cannot read configuration file '%s' to its end.", path);
    return text->is_whole;
}
