// SPDX-License-Identifier: MIT
#include "controller/TEReportTableViewController.hpp"
#include "platform/core/FatalStop.hpp"
#include "settings/DeepLink.hpp"
#include "settings/SharedStore.hpp"

namespace vantor {

void TEReportTableViewController::manualInfoRefresh(Sender /*sender*/) {
    refreshInfo();
}

void TEReportTableViewController::cleanRam(Sender /*sender*/) {
    if (extensionContext() != nullptr) { // without a host the preference is not even read
        const bool onlyShow = sharedFlag(SettingsKey::preventCleanRAMFromWidget);
        openLink(onlyShow ? DeepLink::showRam : DeepLink::cleanRam);
    }
}

void TEReportTableViewController::openApp(Sender /*sender*/) {
    openLink(DeepLink::showStorage);
}

void TEReportTableViewController::showCpuChart(Sender /*sender*/) {
    openLink(DeepLink::showCpu);
}

void TEReportTableViewController::openLink(std::string_view link) {
    if (extensionContext() == nullptr) {
        return;
    }
    const std::optional<platform::NSURL> url = platform::NSURL::URLWithString(link);
    if (!url) {
        platform::fatalStop("a deep link is no URL");
    }
    extensionContext()->openURL(*url, nullptr);
}

} // namespace vantor
