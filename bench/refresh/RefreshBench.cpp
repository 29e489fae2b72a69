// SPDX-License-Identifier: MIT
// What one refresh of all four sections costs, beside the bare calls that read as much (BareCalls.cpp):
// medians of the one thread's processor time, and their ratio, which is to stay within 1.5 on a processor
// that was busy waiting. With preferences it makes fewer calls, since it reads them only where they changed.
// After a sleep both find their code and data gone from the caches, as a widget's refresh does, and the one
// that has more of it loses more.
#include "BareCalls.hpp"
#include "FullRefresh.hpp"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using vantor::costs::BareCalls;
using vantor::tests::FullRefresh;

double threadSeconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Half again as long as a tick at 100 Hz: a refresh between two ticks would wait for the next one.
constexpr std::chrono::milliseconds betweenRefreshes{15};

void spin() {
    const auto end = std::chrono::steady_clock::now() + betweenRefreshes;
    while (std::chrono::steady_clock::now() < end) {
    }
}

void sleep() {
    std::this_thread::sleep_for(betweenRefreshes);
}

template<class Refresh>
double secondsOf(void (&wait)(), const Refresh& refresh) {
    wait();
    const double start = threadSeconds();
    refresh();
    return threadSeconds() - start;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// A folder for a preference file as the app writes it.
class Home {
public:
    Home() {
        std::string pattern = (std::filesystem::temp_directory_path() / "vantor-bench-XXXXXX").string();
        m_folder = ::mkdtemp(pattern.data());
    }
    ~Home() { std::filesystem::remove_all(m_folder); }
    Home(const Home&) = delete;
    Home& operator=(const Home&) = delete;

    [[nodiscard]] const std::string& folder() const { return m_folder; }
    [[nodiscard]] std::string storeFile() const { return m_folder + "/store.plist"; }
    [[nodiscard]] vantor::platform::linux::LinuxMachine::Options machine() const {
        vantor::platform::linux::LinuxMachine::Options options;
        options.folders.home = options.folders.config = options.folders.cache = m_folder;
        return options;
    }
    [[nodiscard]] vantor::platform::linux::ViewerOptions viewer() const {
        vantor::platform::linux::ViewerOptions options;
        options.folders.suiteFile = storeFile();
        return options;
    }
    void putStore(bool there) const {
        std::filesystem::remove(storeFile());
        if (there) {
            std::ofstream(storeFile())
                << R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)"
                << "<key>isInactiveRAMHide</key><true/><key>refreshSeconds</key>"
                << "<string>2</string></dict></plist>";
        }
    }

private:
    std::string m_folder;
};

/// Both in turns, so that whatever else the machine does hits them alike.
void refreshBesideBareCalls(benchmark::State& state, void (&wait)(), bool withStore) {
    static const Home home;
    static FullRefresh widget(home.machine(), home.viewer()); // what is costly to find is found once
    const BareCalls calls(home.folder(), home.storeFile());
    home.putStore(withStore);
    std::vector<double> full;
    std::vector<double> bare;
    for ([[maybe_unused]] const auto iteration : state) {
        full.push_back(secondsOf(wait, [] { widget.refresh(); }));
        bare.push_back(secondsOf(wait, [&calls] { calls.refresh(); }));
        state.SetIterationTime(full.back());
    }
    state.counters["full_us"] = 1e6 * median(full);
    state.counters["bare_us"] = 1e6 * median(bare);
    state.counters["ratio"] = median(full) / median(bare);
}

BENCHMARK_CAPTURE(refreshBesideBareCalls, withoutStore, spin, false)->UseManualTime()->Iterations(500);
BENCHMARK_CAPTURE(refreshBesideBareCalls, withStore, spin, true)->UseManualTime()->Iterations(500);
BENCHMARK_CAPTURE(refreshBesideBareCalls, withoutStoreAsleep, sleep, false)->UseManualTime()->Iterations(300);
BENCHMARK_CAPTURE(refreshBesideBareCalls, withStoreAsleep, sleep, true)->UseManualTime()->Iterations(300);

} // namespace

BENCHMARK_MAIN();
