// SPDX-License-Identifier: MIT
#include "actions/ReleaseWords.hpp"

#include "platform/foundation/NSByteCountFormatter.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <algorithm>
#include <limits>

namespace vantor {

using platform::NSLocalizedString;
using platform::textWithValue;

std::string storageSize(std::uint64_t bytes) {
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return bytes == 0 ? "0 KB"
                      : platform::NSByteCountFormatter::stringFromByteCount(
                            static_cast<std::int64_t>(std::min(bytes, most)),
                            platform::NSByteCountFormatterCountStyle::file);
}

std::string releaseResult(const Released& released) {
    const std::string size = storageSize(released.bytes);
    if (!released.gained) {
        return textWithValue(NSLocalizedString("action_RELEASEDONLY"), "size", size);
    }
    const std::string text = textWithValue(textWithValue(NSLocalizedString("action_RELEASED"), "size", size),
                                           "gained", storageSize(*released.gained));
    // Others write meanwhile, so that a little less means nothing.
    return *released.gained < released.bytes / 2 ? text + ' ' + NSLocalizedString("action_RELEASEDLATER")
                                                 : text;
}

} // namespace vantor
