// vek_bench PART DATABASES TABLES [FLAG...] - run one part of the benchmark on a tree of
// that size.  The flags are those of Google Benchmark.  The parts "calls" (a warm start
// and some searches) and "cold-calls" (a cold start) run once, between marks for strace.

#include "parts.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

static int run(int count, char **arguments, const tree &made, const char *part)
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
    benchmark::Initialize(&count, arguments);
    return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 1;
}

int main(int count, char **arguments)
{
    if (count < 4) {
        fprintf(stderr,
                "usage: %s start|session|copy|calls|cold-calls DATABASES TABLES [FLAG...]\n",
                arguments[0]);
        return 2;
    }
    const tree made = make_tree(temporary_directory(), atoi(arguments[2]), atoi(arguments[3]));
    const char *part = arguments[1];
    arguments[3] = arguments[0];
    int result = run(count - 3, arguments + 3, made, part);
    remove_tree(made);
    return result;
}
