// SPDX-License-Identifier: MIT
#include "platform/linux/workload/ProcessorStateReader.hpp"

#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/TextScan.hpp"
#include "platform/linux/workload/WorkText.hpp"

#include <algorithm>
#include <array>
#include <string>

namespace vantor::platform::linux {

namespace {

std::optional<std::uint64_t> numberIn(const KernelTree& tree, const std::string& file) {
    const std::optional<std::string> line = tree.line(file);
    return line ? numberFrom(*line) : std::nullopt;
}

/// Each policy stands for the processors that change their frequency together (kHz; cpufreq/core.rst); the
/// mean counts each policy once.
std::optional<double> frequency(const KernelTree& tree) {
    constexpr std::string_view folderPath = "sys/devices/system/cpu/cpufreq";
    Folder folder(tree.path(folderPath));
    double sum = 0;
    int policies = 0;
    while (const char* const name = folder.next()) {
        const std::string file = std::string(folderPath) + '/' + name + "/scaling_cur_freq";
        if (const std::optional<std::uint64_t> kilohertz = numberIn(tree, file)) {
            sum += static_cast<double>(*kilohertz) * 1000;
            ++policies;
        }
    }
    return policies > 0 ? std::optional(sum / policies) : std::nullopt;
}

/// In thousandths of a degree (hwmon/sysfs-interface.rst).
std::optional<double> temperature(const KernelTree& tree) {
    constexpr std::array<std::string_view, 5> processors{"coretemp", "k10temp", "zenpower", "cpu_thermal",
                                                         "via_cputemp"};
    constexpr std::string_view folderPath = "sys/class/hwmon";
    constexpr int mostSensors = 256;
    constexpr std::uint64_t hottest = 200'000;
    Folder folder(tree.path(folderPath));
    std::optional<double> highest;
    while (const char* const name = folder.next()) {
        const std::string sensor = std::string(folderPath) + '/' + name;
        const std::string chip = tree.line(sensor + "/name").value_or("");
        bool goesOn = std::ranges::find(processors, chip) != processors.end();
        for (int i = 1; i <= mostSensors && goesOn; ++i) {
            const std::string file = sensor + "/temp" + std::to_string(i) + "_input";
            if (const std::optional<std::uint64_t> value = numberIn(tree, file); value && *value <= hottest) {
                highest = std::max(highest.value_or(0), static_cast<double>(*value) / 1000);
            }
            goesOn = i < 2 || tree.exists(file); // some chips begin with 2
        }
    }
    return highest;
}

} // namespace

ProcessorState readProcessorState(const KernelTree& tree) {
    return {.processors = parseProcessorTicks(tree.read("proc/stat").text),
            .loads = parseLoadAverages(tree.read("proc/loadavg").text),
            .hertz = frequency(tree),
            .celsius = temperature(tree)};
}

} // namespace vantor::platform::linux
