// SPDX-License-Identifier: MIT
#include "hosts/qt/HostText.hpp"

#include "platform/foundation/NSLocalizedString.hpp"

namespace vantor::hosts::qt {

QString hostText(std::string_view key) {
    return QString::fromStdString(platform::NSLocalizedString(key));
}

QString hostText(std::string_view key, std::string_view placeholder, std::string_view value) {
    return QString::fromStdString(
        platform::textWithValue(platform::NSLocalizedString(key), placeholder, value));
}

QString valueText(std::string_view name, std::string_view value) {
    const std::string named =
        platform::textWithValue(platform::NSLocalizedString("host_VALUE"), "name", name);
    return QString::fromStdString(platform::textWithValue(named, "value", value));
}

bool isRightToLeft() {
    return hostText("home_USEDRAM").isRightToLeft();
}

} // namespace vantor::hosts::qt
