// SPDX-License-Identifier: MIT
#pragma once

#include "controller/ReportRecords.hpp"

#include <string>

namespace vantor {

/// What no row of a section tells, for a host to show beside its name, in the viewer's language: all memory
/// ("of 16 GB"), and the share of the processors that work at low priority takes, which the ring counts in
/// ("12.50 % at low priority"). Empty where there is nothing to tell: no report yet, a share that is shown as
/// 0, any other section.
[[nodiscard]] std::string sectionNote(platform::Source source, const ReportRecords& records);

} // namespace vantor
