// SPDX-License-Identifier: MIT
// What a refresh of a wall of ten thousand machines is made of, each part alone; bench/fleet/measure measures
// whole programs.
#include "fleet/FleetTable.hpp"
#include "fleet/WallGrid.hpp"
#include "platform/remote/answers/QueryAnswer.hpp"
#include "platform/remote/sources/FleetRefresh.hpp"
#include "platform/simulated/SimulatedFleet.hpp"

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace vantor;
using namespace std::chrono_literals;
using fleet::FleetOrder;
using fleet::FleetTable;

constexpr std::size_t machines = 10000;

/// Of two refreshes, one after the other.
const std::array<std::shared_ptr<const platform::FleetSnapshot>, 2>& snapshots() {
    static const auto made = [] {
        platform::SimulatedFleet fleet(machines);
        std::array<std::shared_ptr<const platform::FleetSnapshot>, 2> two;
        for (auto& snapshot : two) {
            fleet.start();
            snapshot = fleet.snapshot();
            fleet.pause();
        }
        return two;
    }();
    return made;
}

std::chrono::nanoseconds now() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

enum Newer { inPlace, orderedAnew, withOthers };

/// Newer figures: while an order holds, with a new one, and where every tenth machine comes or goes.
void take(benchmark::State& state) {
    FleetTable table;
    const auto time = now();
    table.groupBy("role", time);
    auto newer = snapshots();
    if (state.range(0) == withOthers) {
        auto fewer = std::make_shared<platform::FleetSnapshot>(*newer[1]);
        std::erase_if(fewer->machines, [turn = 0](const auto&) mutable { return ++turn % 10 == 0; });
        newer[1] = std::move(fewer);
    }
    std::size_t turn = 0;
    for (auto _ : state) {
        table.take(newer[++turn % 2], time);
        if (state.range(0) == orderedAnew) {
            table.orderBy(FleetOrder::worst, time);
        }
        benchmark::DoNotOptimize(table.rows().data());
    }
    constexpr std::array labels{"in place", "ordered anew", "others come and go"};
    state.SetLabel(labels.at(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(take)->DenseRange(inPlace, withOthers)->Unit(benchmark::kMillisecond);

/// A second later, when ages have grown.
void passTime(benchmark::State& state) {
    FleetTable table;
    auto time = now();
    table.take(snapshots()[0], time);
    for (auto _ : state) {
        benchmark::DoNotOptimize(table.passTime(time += 1us));
    }
}
BENCHMARK(passTime)->Unit(benchmark::kMillisecond);

/// A letter typed into the filter.
void filter(benchmark::State& state) {
    FleetTable table;
    table.take(snapshots()[0], now());
    std::size_t turn = 0;
    for (auto _ : state) {
        table.filter(++turn % 2 == 0 ? "db0" : "db", now());
    }
}
BENCHMARK(filter)->Unit(benchmark::kMillisecond);

/// Choosing among four densities for a terminal of 200 columns.
void grid(benchmark::State& state) {
    FleetTable table;
    table.groupBy("role", now());
    table.take(snapshots()[0], now());
    constexpr std::array<fleet::WallStep, 4> steps{{{20, 6, 2}, {60, 2, 2}, {12, 4, 2}, {1, 1, 2}}};
    for (auto _ : state) {
        const std::size_t step = fleet::WallGrid::richest(table.groups(), steps, 200, 120);
        const fleet::WallGrid placed(table.groups(), steps[step], 200);
        benchmark::DoNotOptimize(placed.between(0, 120));
    }
}
BENCHMARK(grid)->Unit(benchmark::kMicrosecond);

/// One answer of a Prometheus: a share for each machine, 1 MB.
std::string answer() {
    std::string json = R"({"status":"success","data":{"resultType":"vector","result":[)";
    for (std::size_t number = 0; number < machines; ++number) {
        json += number == 0 ? "" : ",";
        json += R"({"metric":{"instance":"node)" + std::to_string(number) +
                R"(:9100","job":"node"},"value":[1700000000.123,"0.)" + std::to_string(number * 7919) +
                R"("]})";
    }
    return json + "]}}";
}

void parse(benchmark::State& state) {
    const std::string json = answer();
    for (auto _ : state) {
        double sum = 0;
        benchmark::DoNotOptimize(
            platform::remote::readQueryAnswer(json, [&sum](const platform::remote::AnswerSeries& series) {
                sum += series.points.front().value + static_cast<double>(series.label("instance").size());
            }));
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(json.size()) * state.iterations());
}
BENCHMARK(parse)->Unit(benchmark::kMillisecond);

/// All answers of a refresh parsed and merged.
void merge(benchmark::State& state) {
    platform::remote::FetchAnswer one;
    one.status = 200;
    one.body = answer();
    platform::remote::FleetRefresh refresh({});
    for (auto _ : state) {
        refresh.begin(now());
        while (!refresh.isDone()) {
            refresh.take(one);
        }
        benchmark::DoNotOptimize(refresh.snapshot().get());
    }
}
BENCHMARK(merge)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
