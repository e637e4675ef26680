// Included in front of each source of the library when it is built for the
// fuzzers: its variables get sections of their own, so that their values can be
// put back between two inputs without the library's help.

#pragma clang section bss = "vek_bss" data = "vek_data"
