// SPDX-License-Identifier: MIT
// What the window's wall of ten thousand machines costs to paint at 1920x1080, drawn into memory without a
// display; bench/fleet/measure measures whole programs.
#include "hosts/common/HostViewer.hpp"
#include "hosts/wall/Wall.hpp"
#include "platform/simulated/SimulatedFleet.hpp"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <array>
#include <functional>
#include <memory>
#include <utility>

namespace {

using namespace vantor;
using hosts::wall::Density;

/// Shows what it is given.
class Held final : public platform::FleetSource {
public:
    Held() {
        platform::SimulatedFleet fleet(10'000);
        fleet.start();
        m_snapshot = fleet.snapshot();
    }
    void show(std::shared_ptr<const platform::FleetSnapshot> snapshot) {
        m_snapshot = std::move(snapshot);
        m_handler();
    }
    void start() override {}
    void pause() override {}
    [[nodiscard]] std::shared_ptr<const platform::FleetSnapshot> snapshot() const override {
        return m_snapshot;
    }
    [[nodiscard]] bool isSettled() const override { return true; }
    void setHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

private:
    std::shared_ptr<const platform::FleetSnapshot> m_snapshot;
    std::function<void()> m_handler;
};

struct Shown {
    explicit Shown(benchmark::State& state) {
        wall.setLook(hosts::wall::WallLook::of(platform::Appearance::light, 1, {}));
        wall.groupBy("role");
        wall.resize(1920, 1080);
        wall.show();
        if (state.range(0) < static_cast<std::int64_t>(Density::smallSquares)) {
            wall.view().setDensity(static_cast<Density>(state.range(0)));
        }
        QApplication::processEvents();
        constexpr const char* names[] = {"cards", "rings", "ring", "squares", "small squares"};
        state.SetLabel(names[static_cast<int>(wall.view().density())]);
    }
    [[nodiscard]] std::size_t painted() { return wall.view().paintedCells(); }

    Held held;
    hosts::wall::Wall wall{held, "prod"};
};

/// All that is in sight; with small squares that is each of the ten thousand.
void paintAll(benchmark::State& state) {
    Shown shown(state);
    const std::size_t before = shown.painted();
    for (auto _ : state) {
        shown.wall.view().viewport()->repaint();
    }
    state.counters["cells"] =
        benchmark::Counter(static_cast<double>(shown.painted() - before), benchmark::Counter::kAvgIterations);
}
BENCHMARK(paintAll)->DenseRange(0, static_cast<int>(Density::smallSquares))->Unit(benchmark::kMillisecond);

/// One machine turns red, and green again: the table takes the snapshot, the wall finds the cell and paints
/// it.
void paintOne(benchmark::State& state) {
    Shown shown(state);
    auto other = std::make_shared<platform::FleetSnapshot>(*shown.held.snapshot());
    const auto& rows = shown.wall.table().rows();
    const auto* const first = &shown.held.snapshot()->machines.front();
    const std::size_t index = static_cast<std::size_t>(rows.at(rows.size() / 2).machine - first);
    other->machines.at(index).figures[0] = 0.99;
    const std::array both{shown.held.snapshot(), std::shared_ptr<const platform::FleetSnapshot>(other)};
    std::size_t turn = 0;
    const std::size_t before = shown.painted();
    for (auto _ : state) {
        shown.held.show(both.at(++turn % 2));
        QApplication::processEvents();
    }
    state.counters["cells"] =
        benchmark::Counter(static_cast<double>(shown.painted() - before), benchmark::Counter::kAvgIterations);
}
BENCHMARK(paintOne)->Arg(static_cast<int>(Density::smallSquares))->Unit(benchmark::kMillisecond);

/// The cursor goes from one machine to the next.
void moveCursor(benchmark::State& state) {
    Shown shown(state);
    std::size_t turn = 0;
    for (auto _ : state) {
        shown.wall.view().setCursor(++turn % 2);
        QApplication::processEvents();
    }
}
BENCHMARK(moveCursor)->Arg(static_cast<int>(Density::smallSquares))->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setStyle(QStringLiteral("fusion"));
    const QApplication application(argc, argv);
    const hosts::common::HostViewer viewer(true, false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
