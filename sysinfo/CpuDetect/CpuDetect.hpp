// SPDX-License-Identifier: MIT
#pragma once

/// Everything of this library.
#include "sysinfo/CpuDetect/CpuArchitecture.hpp"
#include "sysinfo/CpuDetect/GPUDetection.hpp"
#include "sysinfo/CpuDetect/HWInfo.hpp"
#include "sysinfo/CpuDetect/Printer.hpp"
#include "sysinfo/CpuDetect/UnameReimplemented.hpp"
#include "sysinfo/SystemValues/CPUID.hpp"

namespace vantor::CpuDetect {
using SystemValues::CPUID;
} // namespace vantor::CpuDetect
