// SPDX-License-Identifier: MIT
#include "hosts/widget/Snapshot.hpp"

#include "hosts/common/Failures.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "hosts/common/Pause.hpp"
#include "hosts/qt/PictureFile.hpp"
#include "hosts/widget/Readiness.hpp"
#include "hosts/widget/WidgetHost.hpp"

namespace vantor::hosts::widget {

namespace {

constexpr double longestWait = 3.7; // seconds
constexpr double tallest = 4096;    // points that a file offers in height

} // namespace

int writeSnapshot(const Options& options, const common::RemoteNode* node) {
    std::optional<common::VirtualTime> time;
    if (options.demo) {
        time.emplace();
    }
    WidgetHost host;
    if (node != nullptr) {
        host.follow(*node);
    }
    {
        const Readiness ready(host.controller());
        const auto done = [&ready] { return ready.isReached(); };
        // A machine that does not answer in time is shown as it is.
        const auto resumed = [&host](platform::Instant now) { common::resumeWidget(host.controller(), now); };
        (void)(time ? time->turnUntil(done, longestWait) : common::turnUntil(done, longestWait, resumed));
    }
    host.update();

    const bool dark = options.appearance == AppearanceChoice::dark;
    using Mode = platform::NCWidgetDisplayMode;
    host.setTheme(qt::Theme::of(dark ? platform::Appearance::dark : platform::Appearance::light, 1, {}));
    host.setMode(options.expanded.value_or(true) ? Mode::expanded : Mode::compact, tallest);
    WidgetCard& card = host.card();
    card.setAttribute(Qt::WA_DontShowOnScreen);
    card.show(); // lays everything out
    card.animator().settle();

    const bool isWhole = common::currentFailures().empty();
    const int status = qt::writePicture(card, *options.snapshot, options.scale, "vantor-widget");
    return isWhole ? status : 1;
}

} // namespace vantor::hosts::widget
