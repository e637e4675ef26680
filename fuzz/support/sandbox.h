// Wrappers of C library functions, which the linker substitutes in a fuzzer
// (--wrap).

#pragma once

// While this is set, allocated blocks are recorded, and nothing outside the fuzzer's
// directory can be opened, created, renamed or removed.
extern bool sandbox_active;

void sandbox_release_all(); // frees the recorded blocks
