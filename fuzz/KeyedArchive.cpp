// SPDX-License-Identifier: MIT
#include "Fuzz.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/foundation/NSKeyedUnarchiver.hpp"

using namespace vantor::platform;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const UnarchivedObject object =
        NSKeyedUnarchiver::unarchiveTopLevelObjectWithData(vantor::fuzz::asText(data, size));
    if (const auto* const color = std::get_if<UIColor>(&object)) {
        const RGBA painted = color->resolved(Appearance::dark);
        vantor::fuzz::require(painted.red >= 0 && painted.red <= 1 && painted.alpha >= 0 &&
                              painted.alpha <= 1);
    }
    if (const auto* const other = std::get_if<OtherClass>(&object)) {
        // An ellipsis after the cut makes a long name longer than the bound itself, hence the room.
        vantor::fuzz::require(printableText(other->className, 1024) == other->className);
    }
    return 0;
}
