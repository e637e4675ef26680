// The environment variables of the whole suite, in the order of the report, each
// with its description for the user.

#pragma once

struct vek_env_row {
    const char *name;
    // One or more lines, in which "<value>" is printed as it is and means the
    // variable's value; or one of two markers:
    //   "SKIP"  the row is ignored; its variable is not even looked up
    //   "NONE"  the variable is reported with its value and no description
    const char *text;
};

extern const vek_env_row vek_env_table[];
extern const short vek_env_count;
