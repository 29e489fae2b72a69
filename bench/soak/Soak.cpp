// SPDX-License-Identifier: MIT
// The whole widget without a screen, on a clock that may run faster than time does: vantor-soak MACHINE SPEED
// SECONDS. MACHINE is `simulated` or `real`; after SECONDS of real time the program says what it did and
// ends. scripts/soak watches it from outside.
#include "controller/ReportInterface.hpp"
#include "hosts/common/HostMachine.hpp"
#include "platform/core/MakeForEver.hpp"
#include "platform/time/RunLoop.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <clocale>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string_view>

namespace {

using vantor::platform::Instant;
using vantor::platform::RunLoop;
using Seconds = std::chrono::duration<double>;

/// What the workers wake; lives as long as the process, since a worker may post until the very end.
struct Bell {
    std::mutex mutex;
    std::condition_variable changed;
    bool rung = false;
};

/// The steady clock, made faster.
class FastClock {
public:
    explicit FastClock(double speed) : m_speed(speed) {}
    [[nodiscard]] Instant now() const {
        return m_start + std::chrono::duration_cast<Instant::duration>((steady() - m_start) * m_speed);
    }
    [[nodiscard]] Instant real(Instant fast) const {
        return m_start + std::chrono::duration_cast<Instant::duration>((fast - m_start) / m_speed);
    }
    [[nodiscard]] Seconds running() const { return steady() - m_start; }

private:
    static Instant steady() { return std::chrono::steady_clock::now(); }
    double m_speed;
    Instant m_start = steady();
};

/// What a host would draw in this turn.
std::size_t draw(const vantor::TEReportTableViewController& controller, Instant now) {
    std::size_t layers = 0;
    for (const auto& chart :
         {controller.ramChartView(), controller.storateChartView(), controller.cpuChartView()}) {
        layers += chart->hostingController()->rootView()->body({{0, 0}, {97, 97}}, now).size();
    }
    return layers;
}

void soak(vantor::TEReportTableViewController& controller, double speed, double seconds) {
    static Bell bell;
    RunLoop& loop = RunLoop::main();
    loop.setWakeHandler([] {
        const std::scoped_lock lock(bell.mutex);
        bell.rung = true;
        bell.changed.notify_one();
    });
    std::array<unsigned long long, 4> reports{};
    unsigned long long turns = 0;
    unsigned long long layers = 0;
    controller.setReportHandler(
        [&reports](vantor::platform::Source section) { ++reports.at(static_cast<std::size_t>(section)); });
    const FastClock clock(speed);
    loop.setClock([&clock] { return clock.now(); });
    controller.view();
    while (clock.running().count() < seconds) {
        const Instant now = clock.now();
        loop.turn(now);
        layers += draw(controller, now);
        ++turns;
        // Asked before the bell is locked: the loop rings it under its own lock.
        const Instant next = clock.real(loop.nextDeadline().value_or(now + std::chrono::seconds(1)));
        std::unique_lock lock(bell.mutex);
        bell.changed.wait_until(lock, next, [] { return bell.rung; });
        bell.rung = false;
    }
    loop.setWakeHandler({});
    loop.setClock({});
    std::printf("%.0f s at %gx: %llu turns, %llu layers; reports: memory %llu, storage %llu, processor %llu, "
                "network %llu\n",
                seconds, speed, turns, layers, reports[0], reports[1], reports[2], reports[3]);
}

} // namespace

int main(int count, char** words) {
    const std::string_view machine = count == 4 ? words[1] : "";
    const double speed = count == 4 ? std::atof(words[2]) : 0;
    const double seconds = count == 4 ? std::atof(words[3]) : 0;
    if ((machine != "simulated" && machine != "real") || speed <= 0 || seconds <= 0) {
        std::fputs("usage: vantor-soak simulated|real SPEED SECONDS\n", stderr);
        return 2;
    }
    std::setlocale(LC_ALL, "");
    vantor::platform::makeForEver<vantor::hosts::common::HostMachine>(machine == "simulated");
    const auto controller = vantor::ReportInterface::instantiate();
    soak(*controller, speed, seconds);
    return 0;
}
