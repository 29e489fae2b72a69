// SPDX-License-Identifier: MIT
// What a query costs: asked of the kernel, and answered from the store.
#include "sysinfo/CpuDetect/CpuDetect.hpp"
#include "sysinfo/SystemValues/SystemValues.hpp"

#include <benchmark/benchmark.h>

namespace {

using namespace vantor;
using SystemValues::Sysctl;
using SystemValues::SysctlQueryStorage;

enum Mode { fresh, unrecorded, replayed };

/// Sets the store's switches for one benchmark; fills it first where it is to be replayed.
template<class Query>
void measure(benchmark::State& state, Query query) {
    SysctlQueryStorage::enabled = state.range(0) != unrecorded;
    SysctlQueryStorage::recoverEveryQueryFromStorage = false;
    if (!query()) {
        state.SkipWithError("this machine does not know the key");
        return;
    }
    SysctlQueryStorage::recoverEveryQueryFromStorage = state.range(0) == replayed;
    for (auto _ : state) {
        auto value = query();
        benchmark::DoNotOptimize(value);
    }
    state.SetLabel(state.range(0) == fresh        ? "fresh, recorded"
                   : state.range(0) == unrecorded ? "fresh, store off"
                                                  : "replayed");
}

void text(benchmark::State& state) {
    measure(state, Sysctl::Kern::osrelease);
}
void memory(benchmark::State& state) {
    measure(state, Sysctl::HW::memsize);
}
void pageSize(benchmark::State& state) {
    measure(state, Sysctl::HW::pagesize);
}
void cores(benchmark::State& state) {
    measure(state, Sysctl::HW::physicalcpu);
}
void kernelParameter(benchmark::State& state) {
    measure(state, [] { return Sysctl::VM::getInteger<int>("swappiness"); });
}

BENCHMARK(text)->DenseRange(fresh, replayed);
BENCHMARK(memory)->DenseRange(fresh, replayed);
BENCHMARK(pageSize)->DenseRange(fresh, replayed);
BENCHMARK(cores)->DenseRange(fresh, replayed);
BENCHMARK(kernelParameter)->DenseRange(fresh, replayed);

void cpuid(benchmark::State& state) {
    const bool cached = state.range(0) != 0;
    for (auto _ : state) {
        if (!cached) {
            SystemValues::CPUID::Registers::queryCache =
                std::vector<SystemValues::CPUID::Registers>(); // it would grow with every round
        }
        auto registers = SystemValues::CPUID::Registers::from(1, std::nullopt, !cached);
        benchmark::DoNotOptimize(registers);
    }
    state.SetLabel(cached ? "cached" : "asked");
}
BENCHMARK(cpuid)->DenseRange(0, 1);

} // namespace

int main(int count, char** arguments) {
    CpuDetect::GeneralPrinter::enabled = false;
    SystemValues::GeneralPrinter::enabled = false;
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
