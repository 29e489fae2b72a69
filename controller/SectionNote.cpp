// SPDX-License-Identifier: MIT
#include "controller/SectionNote.hpp"

#include "controller/ByteText.hpp"
#include "controller/ShareText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

namespace vantor {

using platform::NSLocalizedString;
using platform::textWithValue;

std::string sectionNote(platform::Source source, const ReportRecords& records) {
    if (source == platform::Source::memory && records.memory) {
        if (const std::optional<std::int64_t> total = records.memory->find("total")) {
            return textWithValue(NSLocalizedString("host_OFTOTAL"), "size", memoryText(*total));
        }
    }
    if (source == platform::Source::processor && records.processor) {
        constexpr double leastShown = 0.005; // percent
        if (const double nice = records.processor->nice; nice >= leastShown) {
            return textWithValue(NSLocalizedString("host_LOWPRIORITY"), "share", shareText(nice));
        }
    }
    return {};
}

} // namespace vantor
