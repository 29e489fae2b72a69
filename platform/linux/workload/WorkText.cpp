// SPDX-License-Identifier: MIT
#include "platform/linux/workload/WorkText.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <charconv>
#include <limits>

namespace vantor::platform::linux {

namespace {

/// A decimal number that is not negative and no more than `most`.
std::optional<double> decimal(std::string_view word, double most) {
    double value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool fits = error == std::errc() && end == word.data() + word.size() && value >= 0 && value <= most;
    return fits ? std::optional(value) : std::nullopt;
}

/// "avg300=1.25": the number behind the name and the sign.
std::optional<double> shareNamed(std::string_view word, std::string_view name) {
    return word.starts_with(name) ? decimal(word.substr(name.size()), 100) : std::nullopt;
}

/// In bytes.
std::optional<std::uint64_t> fromKibibytes(std::optional<std::uint64_t> value) {
    return value && *value < std::numeric_limits<std::uint64_t>::max() / 1024 ? std::optional(*value * 1024)
                                                                              : std::nullopt;
}

/// The kernel writes KiB: "VmSwap:	     128 kB". In bytes.
std::optional<std::uint64_t> kibibytes(std::string_view text, std::string_view name) {
    return fromKibibytes(statNumber(text, name));
}

/// A process's name as /proc/PID/status has it: a line feed is "\\n", a backslash is doubled.
std::string unescapedName(std::string_view text) {
    text.remove_prefix(text.starts_with('\t') ? 1 : 0);
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '\\' && i + 1 < text.size();
        i += isEscape ? 1 : 0;
        name.push_back(isEscape && text[i] == 'n' ? '\n' : text[i]);
    }
    return name;
}

std::optional<int> processNumber(std::string_view word) {
    const std::optional<std::uint64_t> value = numberFrom(word);
    const bool fits = value && *value <= static_cast<std::uint64_t>(std::numeric_limits<int>::max());
    return fits ? std::optional(static_cast<int>(*value)) : std::nullopt;
}

} // namespace

std::optional<Pressure> parsePressure(std::string_view text) {
    while (const std::optional<Line> line = takeLine(text)) {
        std::string_view rest = line->text;
        if (!line->ended || takeWord(rest) != "some") {
            continue;
        }
        const std::optional<double> last10 = shareNamed(takeWord(rest), "avg10=");
        const std::optional<double> last60 = shareNamed(takeWord(rest), "avg60=");
        const std::optional<double> last300 = shareNamed(takeWord(rest), "avg300=");
        std::string_view total = takeWord(rest);
        if (!last10 || !last60 || !last300 || !total.starts_with("total=")) {
            return std::nullopt;
        }
        total.remove_prefix(std::string_view("total=").size());
        const std::optional<std::uint64_t> microseconds = numberFrom(total);
        return microseconds ? std::optional(Pressure{*last10, *last60, *last300, *microseconds})
                            : std::nullopt;
    }
    return std::nullopt;
}

std::optional<std::uint64_t> statNumber(std::string_view text, std::string_view name) {
    while (const std::optional<Line> line = takeLine(text)) {
        std::string_view rest = line->text;
        if (line->ended && takeWord(rest) == name) {
            return takeNumber(rest);
        }
    }
    return std::nullopt;
}

std::optional<SwapSpace> parseSwapSpace(std::string_view memInfo) {
    const std::optional<std::uint64_t> total = kibibytes(memInfo, "SwapTotal:");
    const std::optional<std::uint64_t> free = kibibytes(memInfo, "SwapFree:");
    return total && free && *free <= *total ? std::optional(SwapSpace{*total, *free}) : std::nullopt;
}

std::optional<MemoryLevel> parseMemoryLevel(std::string_view memInfo) {
    const std::optional<std::uint64_t> total = kibibytes(memInfo, "MemTotal:");
    const std::optional<std::uint64_t> available = kibibytes(memInfo, "MemAvailable:");
    return total && available && *available <= *total ? std::optional(MemoryLevel{*total, *available})
                                                      : std::nullopt;
}

std::vector<int> parseProcessNumbers(std::string_view text) {
    std::vector<int> numbers;
    while (const std::optional<Line> line = takeLine(text)) {
        // A process of another namespace reads as 0.
        if (const std::optional<int> number = processNumber(line->text); number && *number > 0) {
            numbers.push_back(*number);
        }
    }
    return numbers;
}

std::optional<ProcessStat> parseProcessStat(std::string_view text) {
    // The name may hold anything, blanks and parentheses too: it ends at the last one.
    const std::size_t open = text.find('('), close = text.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
        return std::nullopt;
    }
    ProcessStat stat;
    stat.name = text.substr(open + 1, close - open - 1);
    std::string_view rest = text.substr(close + 1);
    if (const std::size_t end = rest.find('\n'); end != std::string_view::npos) {
        rest = rest.substr(0, end);
    }
    // Fields as proc(5) counts them.
    constexpr int first = 3, parent = 4, session = 6, terminal = 7, flags = 9, minor = 10, major = 12,
                  user = 14, system = 15, start = 22, resident = 24;
    bool isWhole = false;
    for (int field = first; field <= resident; ++field) {
        const std::string_view word = takeWord(rest);
        if (field == parent || field == session) {
            (field == parent ? stat.parent : stat.session) = processNumber(word).value_or(0);
        } else if (field == terminal) {
            stat.hasTerminal = word != "0";
        } else if (field == flags) {
            constexpr std::uint64_t kernelThread = 0x00200000; // PF_KTHREAD of linux/sched.h
            stat.isKernelThread = (numberFrom(word).value_or(0) & kernelThread) != 0;
        } else if (field == user || field == system) {
            stat.ticks += numberFrom(word).value_or(0);
        } else if (field == minor || field == major) {
            stat.faults += numberFrom(word).value_or(0);
        } else if (field == resident) {
            stat.resident = numberFrom(word).value_or(0);
        } else if (field == start) {
            const std::optional<std::uint64_t> ticks = numberFrom(word);
            stat.start = ticks.value_or(0);
            isWhole = ticks.has_value();
        }
    }
    return isWhole ? std::optional(stat) : std::nullopt;
}

ProcessMemory parseProcessMemory(std::string_view status) {
    return {kibibytes(status, "RssAnon:").value_or(0) + kibibytes(status, "RssShmem:").value_or(0),
            kibibytes(status, "VmSwap:").value_or(0)};
}

/// Lines are in the kernel's order: after VmSwap nothing follows that is asked for, and few texts end before.
std::optional<ProcessStatus> parseProcessStatus(std::string_view status) {
    ProcessStatus all;
    bool hasSession = false, hasMemory = false, isEnded = false;
    std::optional<bool> isKernelThread; // newer kernels say it
    while (const std::optional<Line> line = takeLine(status)) {
        std::string_view rest = line->text;
        const std::string_view name = takeWord(rest);
        if (name == "Name:") {
            all.stat.name = unescapedName(rest);
        } else if (name == "State:") {
            const std::string_view state = takeWord(rest);
            isEnded = state == "Z" || state == "X";
        } else if (name == "PPid:") {
            all.stat.parent = processNumber(takeWord(rest)).value_or(0);
        } else if (name == "NSsid:") {
            all.stat.session = processNumber(takeWord(rest)).value_or(0);
            hasSession = line->ended;
        } else if (name == "Kthread:") {
            isKernelThread = takeNumber(rest) == 1U;
        } else if (name == "RssAnon:" || name == "RssShmem:") {
            all.memory.memory += fromKibibytes(takeNumber(rest)).value_or(0);
        } else if (name == "VmSwap:") {
            all.memory.swap = fromKibibytes(takeNumber(rest)).value_or(0);
            hasMemory = true;
            break;
        }
    }
    all.stat.isKernelThread = isKernelThread.value_or(!hasMemory && !isEnded);
    return hasSession ? std::optional(std::move(all)) : std::nullopt;
}

std::optional<ProcessMemory> parseProportionalMemory(std::string_view rollup) {
    const std::optional<std::uint64_t> anonymous = kibibytes(rollup, "Pss_Anon:");
    if (!anonymous) {
        return std::nullopt;
    }
    return ProcessMemory{*anonymous + kibibytes(rollup, "Pss_Shmem:").value_or(0),
                         kibibytes(rollup, "SwapPss:").value_or(0)};
}

std::vector<ProcessorTicks> parseProcessorTicks(std::string_view stat) {
    std::vector<ProcessorTicks> processors;
    while (const std::optional<Line> line = takeLine(stat)) {
        std::string_view rest = line->text;
        const std::string_view name = takeWord(rest);
        if (!line->ended || !name.starts_with("cpu") || !numberFrom(name.substr(3))) {
            continue;
        }
        ProcessorTicks ticks;
        constexpr int idle = 3, waiting = 4, stolen = 7; // places in the line
        for (int place = 0; place <= stolen; ++place) {
            const std::uint64_t value = takeNumber(rest).value_or(0);
            (place == idle || place == waiting ? ticks.idle : ticks.busy) += value;
        }
        processors.push_back(ticks);
    }
    return processors;
}

std::optional<std::array<double, 3>> parseLoadAverages(std::string_view text) {
    std::array<double, 3> loads{};
    for (double& load : loads) {
        constexpr double most = 1e9;
        const std::optional<double> value = decimal(takeWord(text), most);
        if (!value) {
            return std::nullopt;
        }
        load = *value;
    }
    return loads;
}

} // namespace vantor::platform::linux
