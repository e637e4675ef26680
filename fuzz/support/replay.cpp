// Runs each file named on the command line as an input, in the place of libFuzzer.

#include "support/harness.h"

#include <cstdint>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size);

int main(int count, char **files)
{
    for (int i = 1; i < count; ++i) {
        const std::string input = read_file(files[i]);
        LLVMFuzzerTestOneInput((const uint8_t *)input.data(), input.size());
    }
    environ = nullptr; // the harness's is gone when the counts are written
}
