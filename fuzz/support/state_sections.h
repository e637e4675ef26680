// Included before each source of the library in a fuzzer build.  The library's
// variables get sections of their own, so that the harness can restore their values
// before each input.

#pragma clang section bss = "vek_bss" data = "vek_data"
