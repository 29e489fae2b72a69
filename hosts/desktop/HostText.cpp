// SPDX-License-Identifier: MIT
#include "hosts/desktop/HostText.hpp"

#include "Controller/ByteText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

namespace vantor::desktop {

QString hostText(std::string_view key) {
    return QString::fromStdString(platform::NSLocalizedString(key));
}

QString hostText(std::string_view key, std::string_view placeholder, std::string_view value) {
    return QString::fromStdString(
        platform::textWithValue(platform::NSLocalizedString(key), placeholder, value));
}

QString widestFigure() {
    return QString::fromStdString(trafficText(888'880'000'000) + "/s");
}

bool isRightToLeft() {
    return hostText("home_USEDRAM").isRightToLeft();
}

} // namespace vantor::desktop
