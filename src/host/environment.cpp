#include "host/environment.h"

#include <cstdlib>
#include <cstring>

bool env_is(const char *name, const char *value)
{
    const char *found = getenv(name);
    return found != nullptr && strcmp(found, value) == 0;
}

// getenv alone would find "A=B" where the value of A begins with "B=".
const char *env_value(const char *name)
{
    return strchr(name, '=') == nullptr ? getenv(name) : nullptr;
}
