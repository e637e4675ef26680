// The parts of a path: directory, file name, base name, extension.

#include "names/names.h"
#include "text/text.h"

#include <cstring>

static char vek_path_buf[VEK_PATH_SIZE];
static char vek_file_buf[VEK_PATH_SIZE];
static char vek_base_buf[VEK_PATH_SIZE];
static char vek_ext_buf[VEK_PATH_SIZE];
static char vek_tbl_file_buf[VEK_PATH_SIZE];
static char vek_add_ext_buf[VEK_PATH_SIZE];

const char *vorn_vek_input2path(char *text)
{
    text_copy(vek_path_buf, vorn_vek_nt2unix_path(text));
    char *last = strrchr(vek_path_buf, '/');
    if (last == nullptr)
        return vek_empty_text;
    *last = '\0';
    return vek_path_buf;
}

// Copy the file name of a path to a buffer, and return the buffer.
static char *copy_file_name(char (&buffer)[VEK_PATH_SIZE], char *text)
{
    text_copy(buffer, vorn_vek_nt2unix_path(text));
    const char *last = strrchr(buffer, '/');
    if (last != nullptr)
        text_copy(buffer, last + 1);
    return buffer;
}

const char *vorn_vek_input2file(char *text)
{
    return copy_file_name(vek_file_buf, text);
}

const char *split_path(const char *path, char (&directory)[VEK_PATH_SIZE])
{
    const char *last = strrchr(path, '/');
    const char *file = last == nullptr ? path : last + 1;
    text_span dir_part = {path, last == nullptr ? 0 : static_cast<size_t>(last - path)};
    text_copy(directory, dir_part);
    text_copy(vek_path_buf, last == nullptr ? text_span{path, strlen(path)} : dir_part);
    text_copy(vek_file_buf, file);
    return file;
}

const char *vorn_vek_input2base(char *text)
{
    copy_file_name(vek_base_buf, text);
    char *last = strrchr(vek_base_buf, '.');
    if (last != nullptr)
        *last = '\0';
    return vek_base_buf;
}

const char *vorn_vek_input2ext(const char *text)
{
    text_copy(vek_ext_buf, text_or_empty(text));
    const char *last = strrchr(vek_ext_buf, '.');
    if (last == nullptr)
        return vek_empty_text;
    text_copy(vek_ext_buf, last + 1);
    return vek_ext_buf;
}

const char *vek_input2tbl_and_file(char *text)
{
    char directory[VEK_PATH_SIZE];
    text_copy(vek_tbl_file_buf, vorn_vek_nt2unix_path(text));
    text_copy(directory, vek_tbl_file_buf);
    char *last = strrchr(directory, '/');
    if (last == nullptr)
        return vek_tbl_file_buf;
    *last = '\0';
    const char *second = strrchr(directory, '/');
    if (second != nullptr)
        text_copy(vek_tbl_file_buf, vek_tbl_file_buf + (second - directory) + 1);
    return vek_tbl_file_buf;
}

// Append "." unless the name ends with one, and the extension.
static void append_extension(char (&name)[VEK_PATH_SIZE], const char *ext)
{
    size_t length = strlen(name);
    bool has_dot = length > 0 && name[length - 1] == '.';
    if (has_dot || text_append(name, "."))
        text_append(name, ext);
}

const char *vorn_vek_add_extension(const char *name, const char *ext)
{
    char added[VEK_PATH_SIZE]; // `ext` may be in a buffer that is overwritten below
    bool fits = text_copy(added, text_or_empty(ext));
    if (!text_copy(vek_add_ext_buf, text_or_empty(name)))
        return vek_add_ext_buf;
    if (*vorn_vek_input2ext(vorn_vek_input2file(vek_add_ext_buf)) != '\0')
        return vek_add_ext_buf;
    append_extension(vek_add_ext_buf, added);
    if (!fits)
        vek_add_ext_buf[0] = '\0';
    return vek_add_ext_buf;
}
