// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/program/Output.hpp"
#include "sysinfo/program/Page.hpp"

namespace vantor::sysinfo {

/// For people: a page of text. Long values go on below themselves where the look has a width.
[[nodiscard]] std::string pageText(const Page& page, const Look& look);

} // namespace vantor::sysinfo
