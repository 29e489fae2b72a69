// SPDX-License-Identifier: MIT
#include "platform/views/NSExtensionContext.hpp"

#include <utility>

namespace vantor::platform {

void NSExtensionContext::setWidgetLargestAvailableDisplayMode(NCWidgetDisplayMode mode) {
    if (std::exchange(m_largest, mode) != mode) {
        largestAvailableDisplayModeDidChange();
    }
}

} // namespace vantor::platform
