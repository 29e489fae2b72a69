// SPDX-License-Identifier: MIT
#pragma once

/// Everything of this library.
#include "sysinfo/PackagesBase/BoolFromInt.hpp"
#include "sysinfo/PackagesBase/Conversions.hpp"
#include "sysinfo/PackagesBase/Copying.hpp"
#include "sysinfo/PackagesBase/Description.hpp"
#include "sysinfo/PackagesBase/DetectProtocol.hpp"
#include "sysinfo/PackagesBase/FetchProtocol.hpp"
#include "sysinfo/PackagesBase/Guarded.hpp"
#include "sysinfo/PackagesBase/Kinds.hpp"
#include "sysinfo/PackagesBase/Parsed.hpp"
#include "sysinfo/PackagesBase/RepresentableMixin.hpp"
#include "sysinfo/PackagesBase/SimulatableDetectable.hpp"
