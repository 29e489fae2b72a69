// SPDX-License-Identifier: MIT
#include "platform/linux/workload/LinuxWorkload.hpp"

#include <benchmark/benchmark.h>
#include <grp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

// One look at 40 applications with a group each, and at 300 processes without.
namespace {

namespace fs = std::filesystem;
using namespace vantor::platform::linux;

/// Forty groups as systemd makes them, as files: each is opened anew at every look, where the kernel's own
/// would stay open; but the kernel would have to make their texts.
class Groups {
public:
    Groups() {
        const fs::path top = m_root / managerFolder(::getuid());
        std::string stat;
        for (const char* const name : {"anon", "file", "kernel", "kernel_stack", "pagetables", "shmem"}) {
            stat += name + std::string(" 123456789\n");
        }
        for (int line = 0; line < 40; ++line) {
            stat += "workingset_activate_anon_" + std::to_string(line) + " 123456\n";
        }
        write(m_root / "sys/fs/cgroup/cgroup.controllers", "cpu memory\n");
        for (int number = 0; number < 40; ++number) {
            const fs::path group =
                top / "app.slice" / ("app-gnome-org.x.App" + std::to_string(number) + "-1.scope");
            write(group / "cgroup.procs", "11\n12\n13\n14\n15\n16\n17\n");
            write(group / "memory.stat", stat + "inactive_anon 1234567\n");
            write(group / "memory.swap.current", "4096\n");
            write(group / "cpu.stat", "usage_usec 123456789\nuser_usec 1\nsystem_usec 2\n");
            for (int other = 0; other < 56; ++other) { // so many files has a group
                write(group / ("memory.other" + std::to_string(other)), "");
            }
        }
    }
    ~Groups() { fs::remove_all(m_root); }
    Groups(const Groups&) = delete;
    Groups& operator=(const Groups&) = delete;
    [[nodiscard]] const fs::path& root() const { return m_root; }

private:
    static fs::path made() {
        std::string name = "/tmp/vantor-bench-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr) {
            std::abort();
        }
        return name;
    }
    static void write(const fs::path& file, const std::string& text) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }
    const fs::path m_root = made();
};

/// Children of this program that rest.
class Processes {
public:
    Processes() {
        for (int number = 0; number < 300; ++number) {
            const pid_t child = ::fork();
            if (child == 0) {
                ::prctl(PR_SET_PDEATHSIG, SIGKILL);
                for (;;) {
                    ::pause();
                }
            }
            m_numbers.push_back(child);
        }
    }
    ~Processes() {
        for (const pid_t each : m_numbers) {
            ::kill(each, SIGKILL);
            ::waitpid(each, nullptr, 0);
        }
    }
    Processes(const Processes&) = delete;
    Processes& operator=(const Processes&) = delete;

private:
    std::vector<pid_t> m_numbers;
};

void fortyGroups(benchmark::State& state) {
    const Groups groups;
    GroupReader reader(KernelTree(groups.root().string()), ::getuid());
    std::size_t count = 0;
    for (auto _ : state) {
        count = reader.read().size();
    }
    state.counters["groups"] = static_cast<double>(count);
}

enum class How { first, again, single };

void processes(benchmark::State& state, How how) {
    const Processes children;
    const auto look = [how](ProcessReader& reader) {
        std::size_t count = 0;
        for (const auto& [number, stat] : how == How::single ? reader.readOnce() : reader.read()) {
            benchmark::DoNotOptimize(reader.memory(number));
            ++count;
        }
        return count;
    };
    ProcessReader reader(KernelTree("/"), ::getuid());
    std::size_t count = look(reader);
    for (auto _ : state) {
        if (how == How::again) {
            count = look(reader);
        } else {
            ProcessReader fresh(KernelTree("/"), ::getuid());
            count = look(fresh);
        }
    }
    state.counters["processes"] = static_cast<double>(count);
}

void processesAgain(benchmark::State& state) {
    processes(state, How::again);
}
void processesOnce(benchmark::State& state) {
    processes(state, How::first);
}
void processesOnlyOnce(benchmark::State& state) {
    processes(state, How::single);
}

} // namespace

BENCHMARK(fortyGroups)->Unit(benchmark::kMicrosecond);
BENCHMARK(processesAgain)->Unit(benchmark::kMicrosecond);
BENCHMARK(processesOnce)->Unit(benchmark::kMicrosecond);
BENCHMARK(processesOnlyOnce)->Unit(benchmark::kMicrosecond);

/// To root all processes are its own, so that it goes on as nobody.
int main(int argc, char** argv) {
    constexpr unsigned nobody = 65534;
    if (::getuid() == 0 && (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
