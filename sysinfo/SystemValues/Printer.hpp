// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Description.hpp"

#include <atomic>
#include <cstdio>
#include <string_view>

namespace vantor::SystemValues {

/// Writes one line, whole, whatever threads do. A null stream is standard output.
void writeLogLine(std::FILE* stream, std::string_view prefix, std::string_view text);

/// The log lines of one library, which `Library::prefix` names: each library has a switch and a stream of its
/// own. Any thread.
template<class Library>
class GeneralPrinterOf {
public:
    /// Whether anything is written; `Printer` heeds the same switch.
    static inline std::atomic<bool> enabled{true};
    /// Where lines go; null is standard output.
    static inline std::atomic<std::FILE*> output{nullptr};
    static constexpr std::string_view prefix = Library::prefix;
    static constexpr std::string_view errorPrefix{};

    /// The prefix, a blank and the item.
    static void print(const auto& item) { line(prefix, PackagesBase::description(item)); }
    /// A blank and the message: `errorPrefix`, a blank and the item. Readers of the log tell error lines by
    /// the missing library prefix.
    static void errorPrint(const auto& item) { errorLine(errorPrefix, PackagesBase::description(item)); }

protected:
    static void line(std::string_view start, std::string_view text) {
        if (enabled) {
            writeLogLine(output, start, text);
        }
    }
    static void errorLine(std::string_view start, std::string_view text) {
        line("", std::string(start).append(" ").append(text));
    }
};

/// The printer that marks its error lines.
template<class Library>
class PrinterOf : public GeneralPrinterOf<Library> {
public:
    static constexpr std::string_view errorPrefix = "ERROR: ";
    /// "ERROR: " ends in a blank of its own: two stand before the item.
    static void errorPrint(const auto& item) {
        PrinterOf::errorLine(errorPrefix, PackagesBase::description(item));
    }
};

struct LogName {
    static constexpr std::string_view prefix = "[SystemValues]";
};
using GeneralPrinter = GeneralPrinterOf<LogName>;
using Printer = PrinterOf<LogName>;

} // namespace vantor::SystemValues
