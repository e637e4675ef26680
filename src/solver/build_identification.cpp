// Which build of the library this is.

#include "solver/build_texts.h"
#include "vek.h"

#include <cstdio>

// Each string in the library begins with a marker by which tools such as what(1) find
// it.  It is not printed.
const char *vek_version()
{
    constexpr size_t marker_length = sizeof "@(#)" - 1;
    fputs("\n", stdout);
    for (const char *const *text = vek_build_texts; *text != nullptr; ++text)
        fprintf(stdout, "\n%s", *text + marker_length);
    fputs("\n", stdout);
    return vek_version_release;
}

const char *vek_build_version()
{
    return vek_release;
}
