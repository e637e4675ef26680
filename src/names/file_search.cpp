// Finding the file of a name.  A file exists if it opens for reading.

#include "host/environment.h"
#include "host/message.h"
#include "names/names.h"
#include "records.h"
#include "text/text.h"

#include <cstdlib>
#include <cstring>

const char *vek_existing_or_empty(const char *path)
{
    return vek_file_exists(path) != 0 ? path : vek_empty_text;
}

const char *vek_search_levels(const char *file_class, char *name, int skipped)
{
    static char vek_candidate_buf[VEK_PATH_SIZE];
    char file[VEK_PATH_SIZE];
    if (!text_join(file, {"/", vorn_vek_input2base(name), ".", vorn_vek_class2ext(file_class)}))
        return vek_empty_text;
    for (int passed = skipped < 0 ? 0 : skipped; passed < db_count(); ++passed) {
        const char *directory = vorn_vek_get_tbl_path(file_class, passed + 1);
        if (text_join(vek_candidate_buf, {directory, file}) &&
            vek_file_exists(vek_candidate_buf) != 0)
            return vek_candidate_buf;
    }
    return vek_empty_text;
}

bool product_shared_name(char (&second)[VEK_PATH_SIZE], const char *name)
{
    const char *product = vek_product_name();
    if (text_starts_with(name, "klvds://shared"))
        return text_join(second, {"klvds://", product, "_shared", name + strlen("klvds://shared")});
    if (text_starts_with(name, "<shared>"))
        return text_join(second, {"<", product, "_shared>", name + strlen("<shared>")});
    return false;
}

static bool level_search_is_on()
{
    return env_is("KLV_VEK_SEARCH", "yes");
}

// Returns the path of the file of a name, or the empty string.  The caller's strings
// are copied first: they may be in the buffers of the operations that are used here.
// A string that is too long names no file.
static const char *search_name(const char *class_given, char *name_given, int level)
{
    char file_class[VEK_CLASS_SIZE];
    char name[VEK_PATH_SIZE];
    char second[VEK_PATH_SIZE];
    text_copy(file_class, class_given);
    text_copy(name, vorn_vek_nt2unix_path(name_given));
    const char *path = vek_existing_or_empty(vorn_vek_input2full(name));
    if (name[0] == '\0')
        return vek_empty_text; // else the search of the levels would look for files without a name
    if (*path == '\0' && product_shared_name(second, name))
        path = vek_existing_or_empty(vorn_vek_input2full(second));
    if (*path == '\0' && level_search_is_on())
        path = vek_search_levels(file_class, name, level > 0 ? level - 1 : 0);
    return path;
}

char *vorn_vek_search_file(const char *file_class, char *name, int level)
{
    char *found = static_cast<char *>(malloc(VEK_PATH_SIZE));
    if (found == nullptr) {
        vek_err("vorn_vek_search_file", "Malloc failed. Unable to continue search.");
        return vek_empty_text;
    }
    text_copy(found, VEK_PATH_SIZE, search_name(text_or_empty(file_class), name, level));
    if (*found != '\0')
        return found;
    free(found);
    return vek_empty_text;
}
