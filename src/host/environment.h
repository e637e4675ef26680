// Environment variables of the process.

#pragma once

// Whether the variable is set to exactly this value.
bool env_is(const char *name, const char *value);

// The value of a variable whose name comes from a file; null if it is not set, or if
// the name contains "=".  Valid until the environment changes.
const char *env_value(const char *name);
