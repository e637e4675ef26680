// Calls of the C library that the library's own are led through when it is
// linked into a fuzzer.

#pragma once

// While this is set, blocks are counted, and nothing outside of the fuzzer's
// directory is opened, made, renamed or removed.
extern bool sandbox;

void confined_release_all(); // the blocks made since the last time
