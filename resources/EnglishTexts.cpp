// SPDX-License-Identifier: MIT
#include "platform/foundation/NSLocalizedString.hpp"

#include <algorithm>
#include <array>

namespace vantor::platform {

namespace {

// Sorted by key. The catalogues beside this file, under po, translate exactly these; a test compares them.
constexpr std::array texts{
    EnglishText{"home_DATARECEIVED", "Received"},
    EnglishText{"home_DATASENT", "Sent"},
    EnglishText{"home_FREE", "Free RAM"},
    EnglishText{"home_FREESPACE", "Free storage"},
    EnglishText{"home_INACTIVE", "Idle"},
    EnglishText{"home_RELEASABLESPACE", "Releasable"},
    EnglishText{"home_SYSTEM", "System"},
    EnglishText{"home_TOTALSPACE", "Total storage"},
    EnglishText{"home_USEDCPU", "CPU load"},
    EnglishText{"home_USEDRAM", "Used RAM"},
    EnglishText{"home_USEDSPACE", "Used storage"},
    EnglishText{"home_USER", "User"},
    EnglishText{"host_ALWAYSONTOP", "Always on Top"},
    EnglishText{"host_AUTOSTART", "Start at Login"},
    EnglishText{"host_CHART", "Chart"},
    EnglishText{"host_CLEANRAM", "Free Up RAM"},
    EnglishText{"host_HIDEWINDOW", "Hide Vantor"},
    EnglishText{"host_LOWPRIORITY", "{share} at low priority"},
    EnglishText{"host_MEMORY", "RAM"},
    EnglishText{"host_NETWORK", "Network"},
    EnglishText{"host_NOAPP", "The Vantor app is not installed"},
    EnglishText{"host_OFTOTAL", "of {size}"},
    EnglishText{"host_ONDESKTOP", "On the Desktop"},
    EnglishText{"host_OPENSTORAGE", "Show Storage"},
    EnglishText{"host_PROCESSOR", "CPU"},
    EnglishText{"host_QUIT", "Quit"},
    EnglishText{"host_REFRESH", "Refresh"},
    EnglishText{"host_REFRESHED", "Refreshed"},
    EnglishText{"host_RELEASABLETIP", "Includes {size} that can be released"},
    EnglishText{"host_RESERVEDTIP", "Another {size} is reserved for the system"},
    EnglishText{"host_SHOW", "Show"},
    EnglishText{"host_SHOWCPU", "CPU Chart"},
    EnglishText{"host_SHOWLESS", "Show Less"},
    EnglishText{"host_SHOWMORE", "Show More"},
    EnglishText{"host_SHOWRAM", "Show RAM"},
    EnglishText{"host_SHOWWINDOW", "Show Vantor"},
    EnglishText{"host_STORAGE", "Storage"},
    EnglishText{"host_TRAYRING", "Ring in the Tray"},
    EnglishText{"host_UNAVAILABLE", "Not available"},
    EnglishText{"host_USEDCPUVALUE", "CPU load: {value}"},
    EnglishText{"host_USEDRAMVALUE", "Used RAM: {value}"},
    EnglishText{"host_USEDSPACEVALUE", "Used storage: {value}"},
    EnglishText{"host_VALUE", "{name}, {value}"},
};
static_assert(std::ranges::is_sorted(texts, {}, &EnglishText::key));

} // namespace

std::span<const EnglishText> englishTexts() {
    return texts;
}

} // namespace vantor::platform
