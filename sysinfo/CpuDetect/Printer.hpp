// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/SystemValues/Printer.hpp"

namespace vantor::CpuDetect {

/// The library's log lines; the same rules as in `SystemValues`, with a switch of their own. Any thread.
class GeneralPrinter {
public:
    /// Whether anything is written; `Printer` heeds the same switch.
    static inline std::atomic<bool> enabled{true};
    /// Where lines go; null is standard output.
    static inline std::atomic<std::FILE*> output{nullptr};
    static constexpr std::string_view prefix = "[CPUDetect]";
    static constexpr std::string_view errorPrefix{};

    /// The prefix, a blank and the item.
    static void print(const auto& item) { line(prefix, PackagesBase::description(item)); }
    /// A blank and the message: `errorPrefix`, a blank and the item; no library prefix.
    static void errorPrint(const auto& item) { errorLine(errorPrefix, PackagesBase::description(item)); }

protected:
    static void line(std::string_view start, std::string_view text) {
        if (enabled) {
            SystemValues::writeLogLine(output, start, text);
        }
    }
    static void errorLine(std::string_view start, std::string_view text) {
        line("", std::string(start).append(" ").append(text));
    }
};

/// The printer that marks its error lines.
class Printer : public GeneralPrinter {
public:
    static constexpr std::string_view errorPrefix = "ERROR: ";
    /// "ERROR: " ends in a blank of its own: two stand before the item.
    static void errorPrint(const auto& item) { errorLine(errorPrefix, PackagesBase::description(item)); }
};

} // namespace vantor::CpuDetect
