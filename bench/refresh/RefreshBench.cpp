// SPDX-License-Identifier: MIT
// What one refresh of all four sections costs, beside exactly the system calls that it needs (BareCalls.cpp):
// medians of the one thread's processor time, and their ratio, which is to stay within 1.5. Each is taken
// after the processor's ticks have moved, since a refresh would wait for them, and with warm caches.
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

std::string processorLine() {
    std::ifstream stat("/proc/stat");
    std::string line;
    std::getline(stat, line);
    return line;
}

void waitForTicks() {
    const std::string before = processorLine();
    while (processorLine() == before) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

template<class Refresh>
double secondsOf(const Refresh& refresh) {
    waitForTicks();
    refresh(); // warms the caches
    waitForTicks();
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
    [[nodiscard]] vantor::platform::LinuxMachine::Options options() const {
        vantor::platform::LinuxMachine::Options options;
        options.folders.home = options.folders.config = options.folders.cache = m_folder;
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
void refreshBesideBareCalls(benchmark::State& state, bool withStore) {
    static const Home home;
    static FullRefresh widget(home.options()); // one a process: its processor ticks never fall
    const BareCalls calls(home.folder(), home.storeFile());
    home.putStore(withStore);
    std::vector<double> full;
    std::vector<double> bare;
    for ([[maybe_unused]] const auto iteration : state) {
        full.push_back(secondsOf([] { widget.refresh(); }));
        bare.push_back(secondsOf([&calls] { calls.refresh(); }));
        state.SetIterationTime(full.back());
    }
    state.counters["full_us"] = 1e6 * median(full);
    state.counters["bare_us"] = 1e6 * median(bare);
    state.counters["ratio"] = median(full) / median(bare);
}

BENCHMARK_CAPTURE(refreshBesideBareCalls, withoutStore, false)->UseManualTime()->Iterations(500);
BENCHMARK_CAPTURE(refreshBesideBareCalls, withStore, true)->UseManualTime()->Iterations(500);

} // namespace

BENCHMARK_MAIN();
