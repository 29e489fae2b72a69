// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/SystemValues/Printer.hpp"

namespace vantor::CpuDetect {

/// The name that each line of this library's log begins with.
struct LogName {
    static constexpr std::string_view prefix = "[CPUDetect]";
};
/// The two printers of SystemValues under that name; one switch silences both libraries.
using GeneralPrinter = SystemValues::GeneralPrinterOf<LogName>;
using Printer = SystemValues::PrinterOf<LogName>;

} // namespace vantor::CpuDetect
