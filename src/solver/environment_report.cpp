// Reporting what the environment variables that are set will do.

#include "host/message.h"
#include "hsk.h"
#include "solver/environment_table.h"

#include <cstdlib>
#include <cstring>

static void print_variable(const vek_env_row &row, const char *value)
{
    static char text_buf[1024]; // these lines must not overwrite the shared message buffer
    print_line("\n  OS-environment detected:  %s=%s", row.name, value);
    if (strcmp(row.text, "NONE") != 0)
        print_line_in(text_buf, sizeof text_buf, "  %s", row.text);
}

void printenvars()
{
    short count = 0;
    for (short i = 0; i < vek_env_count; ++i) {
        const vek_env_row &row = vek_env_table[i];
        if (strcmp(row.text, "SKIP") == 0)
            continue;
        const char *value = getenv(row.name);
        if (value == nullptr)
            continue;
        ++count;
        print_variable(row, value);
    }
    if (count != 0)
        vc_str_print("");
}
