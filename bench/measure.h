// A measure that runs the same work on one sample of the tree after the other.

#pragma once

#include "tree.h"

#include <benchmark/benchmark.h>

template <typename Work>
benchmark::internal::Benchmark *add_measure(const tree &made, const char *name, const Work &work)
{
    return benchmark::RegisterBenchmark(name, [&made, work](benchmark::State &state) {
        size_t i = 0;
        for (auto _ : state) {
            work(made.samples[i]);
            i = i + 1 == made.samples.size() ? 0 : i + 1;
        }
    });
}
