// The environment variables of the whole suite, in the order of the report,
// each with what to tell the user.

#pragma once

struct vek_env_row {
    const char *name;
    // One or more lines, or a marker, which is the whole text:
    //   "SKIP"  the row is passed over; its variable is not even looked up
    //   "NONE"  the variable is reported with its value and without a text
    // In a text "<value>" stands for the variable's value.
    const char *text;
};

extern const vek_env_row vek_env_table[];
extern const short vek_env_count;
