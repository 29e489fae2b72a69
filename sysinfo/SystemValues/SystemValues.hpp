// SPDX-License-Identifier: MIT
#pragma once

/// Everything of this library.
#include "sysinfo/SystemValues/CPUID.hpp"
#include "sysinfo/SystemValues/FileSystemFetch.hpp"
#include "sysinfo/SystemValues/Printer.hpp"
#include "sysinfo/SystemValues/Replay.hpp"
#include "sysinfo/SystemValues/Sysctl.hpp"
