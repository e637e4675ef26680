// vek_bench PART DATABASES TABLES [FLAG...] - one part of the benchmark on a
// tree of that size.  The flags are those of Google Benchmark.  The part "calls"
// runs a warm start and some searches once, between marks for strace; the part
// "cold-calls" runs a cold start.

#include "parts.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

static int run(int count, char **words, const tree &made, const char *part)
{
    if (strcmp(part, "calls") == 0 || strcmp(part, "cold-calls") == 0) {
        run_calls_once(made, strcmp(part, "cold-calls") == 0);
        return 0;
    }
    if (strcmp(part, "start") == 0)
        add_start(made);
    else if (strcmp(part, "session") == 0)
        add_session(made);
    else if (strcmp(part, "copy") == 0)
        add_copies(made);
    benchmark::AddCustomContext("databases", std::to_string(made.databases));
    benchmark::AddCustomContext("tables", std::to_string(made.tables));
    benchmark::Initialize(&count, words);
    return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 1;
}

int main(int count, char **words)
{
    if (count < 4) {
        fprintf(stderr,
                "usage: %s start|session|copy|calls|cold-calls DATABASES TABLES [FLAG...]\n",
                words[0]);
        return 2;
    }
    const tree made = make_tree(temporary_directory(), atoi(words[2]), atoi(words[3]));
    const char *part = words[1];
    words[3] = words[0];
    int result = run(count - 3, words + 3, made, part);
    remove_tree(made);
    return result;
}
