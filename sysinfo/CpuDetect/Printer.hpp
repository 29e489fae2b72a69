// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/SystemValues/Printer.hpp"

namespace vantor::CpuDetect {

struct LogName {
    static constexpr std::string_view prefix = "[CPUDetect]";
};
using GeneralPrinter = SystemValues::GeneralPrinterOf<LogName>;
using Printer = SystemValues::PrinterOf<LogName>;

} // namespace vantor::CpuDetect
