// Text functions on this host, by Google Benchmark: each beside a copy of its text.

#include "works.hpp"

#include <benchmark/benchmark.h>

int main(int count, char **arguments)
{
    constexpr long batch = 16;
    for (bench::work const &work : bench::text_works())
        for (bench::contender const &contender : work.contenders)
            benchmark::RegisterBenchmark((work.name + "/" + contender.name).c_str(),
                                         [run = contender.run](benchmark::State &state) {
                                             while (state.KeepRunningBatch(batch))
                                                 run(batch);
                                         });
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
