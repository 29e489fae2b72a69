// SPDX-License-Identifier: MIT
#pragma once

#include "HandTurnedQueue.hpp"
#include "TreeMachine.hpp"
#include "controller/ReportInterface.hpp"
#include "platform/foundation/NSUserDefaults.hpp"
#include "platform/linux/user/LinuxViewer.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vantor::tests {

/// What the kernel of a made-up machine would tell.
struct KernelFigures {
    std::uint64_t user = 1000, nice = 10, system = 300, idle = 9000; ///< ticks since boot
    std::size_t processors = 4;
    std::uint64_t memoryTotal = 8'000'000, memoryAvailable = 5'000'000, inactive = 400'000; ///< KiB
    std::vector<std::pair<std::string, std::uint64_t>> links{{"lo", 500}, {"eth0", 1'000'000}};

    void write(const TestTree& tree) const {
        const auto number = [](std::uint64_t value) { return std::to_string(value); };
        std::string stat = "cpu  " + number(user) + ' ' + number(nice) + ' ' + number(system) + ' ' +
                           number(idle) + " 0 0 0 0 0 0\n";
        for (std::size_t i = 0; i < processors; ++i) {
            stat.append("cpu").append(number(i)).append(" 0 0 0 0 0 0 0 0 0 0\n");
        }
        tree.write("proc/stat", stat + "ctxt 1\nbtime 1700000000\n");
        tree.write("proc/meminfo", "MemTotal: " + number(memoryTotal) +
                                       " kB\nMemFree: 100000 kB\nMemAvailable: " + number(memoryAvailable) +
                                       " kB\nInactive(anon): " + number(inactive) + " kB\n");
        std::string net = "Inter-|   Receive\n face |bytes\n";
        for (const auto& [name, bytes] : links) {
            net += name + ": " + number(bytes) + " 1 0 0 0 0 0 0 " + number(bytes) + " 1 0 0 0 0 0 0\n";
        }
        tree.write("proc/net/dev", net);
    }
};

/// The whole widget on the Linux machine and its user, who read a folder instead of /proc and /sys, on a
/// clock and queues that only the test turns.
class TreeStage {
public:
    explicit TreeStage(KernelFigures first = {}) : figures(std::move(first)) {
        figures.write(tree);
        std::filesystem::create_directories((tree.root() / storeFile).parent_path());
        tree.write("sys/class/net/eth0/type", "1\n");
        tree.write("sys/class/net/eth0/device/vendor", "0x8086\n");
    }

    void load() {
        controller->view();
        play();
    }
    /// Lets time pass in one jump; the machine shows the figures as they then are.
    void advance(double seconds) {
        figures.write(tree);
        pass(seconds);
    }
    /// Lets time pass, and the machine's files be what they are.
    void pass(double seconds) {
        machine.pass(std::chrono::nanoseconds(static_cast<std::int64_t>(1e9 * seconds)));
        loop.clock.advance(seconds);
        play();
    }
    /// All four reports, now.
    void refresh() {
        controller->makeReports();
        controller->reportNETWORKStatus();
        play();
    }
    void play() {
        do {
            loop.play();
        } while (loop.queue.waiting() > 0); // shares that are no numbers are asked for again
    }

    /// The machine's sources that cannot be read, and the viewer's.
    std::string failedSources() {
        return machine.failedSources() + (platform::suiteProblem() ? "preferences " : "");
    }

    KernelFigures figures;
    const TestTree tree{TestTree::inMemory()};
    /// No mount ever comes or goes.
    const std::filesystem::path mounts = tree.write("proc/self/mountinfo", localRoot);
    TreeMachine machine{tree.root()};
    platform::linux::LinuxViewer viewer{{.folders = homeBelow(tree.root()),
                                         .useLocale = false,
                                         .tree = platform::linux::KernelTree(tree.root())}};
    platform::Current<platform::Machine> currentMachine{machine.machine()};
    platform::Current<platform::Viewer> currentViewer{viewer};
    HandTurnedLoop loop;
    std::shared_ptr<TEReportTableViewController> controller = ReportInterface::instantiate();
};

} // namespace vantor::tests
