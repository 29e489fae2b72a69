// SPDX-License-Identifier: MIT
#include "platform/linux/LinuxMachine.hpp"
#include "platform/linux/records/TickScale.hpp"
#include "platform/linux/user/SuiteReader.hpp"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <thread>

// Each reader of the live machine beside the bare system calls that its figures need.
namespace {

using vantor::platform::linux::LinuxMachine;
using namespace vantor::platform::linux;

LinuxMachine& machine() {
    static LinuxMachine theMachine;
    return theMachine;
}

/// A kernel file read from the start on a descriptor that stays open: one call, or as many as bring all of
/// it.
void readBare(benchmark::State& state, const char* path, std::size_t wanted, bool toTheEnd) {
    const int descriptor = ::open(path, O_RDONLY | O_CLOEXEC);
    static std::array<char, 1 << 20> buffer;
    for (auto _ : state) {
        std::size_t length = 0;
        ssize_t got = 0;
        do {
            got = ::pread(descriptor, buffer.data() + length, std::min(wanted, buffer.size()) - length,
                          static_cast<off_t>(length));
            length += got > 0 ? static_cast<std::size_t>(got) : 0;
        } while (toTheEnd && got > 0);
        benchmark::DoNotOptimize(buffer);
    }
    ::close(descriptor);
}

void memoryBare(benchmark::State& state) {
    readBare(state, "/proc/meminfo", 4096, false);
}
void memory(benchmark::State& state) {
    vantor::platform::vm_statistics64 record{};
    for (auto _ : state) {
        benchmark::DoNotOptimize(machine().hostVirtualMemory(record));
    }
}

void ticksBare(benchmark::State& state) {
    const int descriptor = ::open("/proc/stat", O_RDONLY | O_CLOEXEC);
    std::array<char, 256> buffer{};
    for (auto _ : state) {
        state.PauseTiming();
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
        state.ResumeTiming();
        benchmark::DoNotOptimize(::pread(descriptor, buffer.data(), buffer.size(), 0));
    }
    ::close(descriptor);
}
/// The reader waits where no time passed since its last answer; here some does, unmeasured, before each.
void ticks(benchmark::State& state) {
    vantor::platform::host_cpu_load_info load{};
    for (auto _ : state) {
        state.PauseTiming();
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
        state.ResumeTiming();
        benchmark::DoNotOptimize(machine().hostCpuLoad(load));
    }
}
/// Choosing the proportions alone, at its dearest: more ticks than may be spent.
void tickScale(benchmark::State& state) {
    TickScale scale;
    std::uint64_t user = 1;
    for (auto _ : state) {
        user = user % 20000 + 7;
        benchmark::DoNotOptimize(scale.add({user, 1501, 170001, 3}, std::chrono::seconds(2)));
    }
}

void linksBare(benchmark::State& state) {
    readBare(state, "/proc/net/dev", 1 << 20, true);
}
void links(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(machine().interfaceAddresses());
    }
}

void volumeBare(benchmark::State& state) {
    const std::string folder = machine().documentDirectories()->at(0);
    for (auto _ : state) {
        for (int i = 0; i < 6; ++i) {
            struct statvfs about {};
            benchmark::DoNotOptimize(::statvfs(folder.c_str(), &about));
        }
    }
}
/// A storage report asks six times in a row; here on a clock on which each report is a new one.
void volume(benchmark::State& state) {
    std::chrono::nanoseconds now{0};
    LinuxMachine::Options options;
    options.clock = [&now] { return now; };
    LinuxMachine reported(std::move(options));
    const std::string folder = reported.documentDirectories()->at(0);
    for (auto _ : state) {
        now += std::chrono::seconds(2);
        for (int i = 0; i < 6; ++i) {
            benchmark::DoNotOptimize(reported.volumeCapacities(folder));
        }
    }
}

/// A preference file of a usual size.
class File {
public:
    File() {
        const int descriptor = ::mkstemp(m_path.data());
        const std::string content(600, 'x');
        if (::write(descriptor, content.data(), content.size()) != 600) {
            std::abort();
        }
        ::close(descriptor);
    }
    ~File() { ::unlink(m_path.c_str()); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    const std::string& path() const { return m_path; }

private:
    std::string m_path = "/tmp/vantor-bench-XXXXXX";
};

void suiteBare(benchmark::State& state) {
    const File file;
    std::array<char, 4096> buffer{};
    for (auto _ : state) {
        const int descriptor = ::open(file.path().c_str(), O_RDONLY | O_CLOEXEC);
        struct stat about {};
        benchmark::DoNotOptimize(::fstat(descriptor, &about));
        benchmark::DoNotOptimize(::read(descriptor, buffer.data(), buffer.size()));
        benchmark::DoNotOptimize(::fstat(descriptor, &about));
        ::close(descriptor);
    }
}
void suite(benchmark::State& state) {
    const File file;
    for (auto _ : state) {
        benchmark::DoNotOptimize(readSuiteFile(file.path().c_str()));
    }
}

} // namespace

BENCHMARK(memoryBare);
BENCHMARK(memory);
BENCHMARK(ticksBare)->Iterations(100);
BENCHMARK(ticks)->Iterations(100);
BENCHMARK(tickScale);
BENCHMARK(linksBare);
BENCHMARK(links);
BENCHMARK(volumeBare);
BENCHMARK(volume);
BENCHMARK(suiteBare);
BENCHMARK(suite);
