// SPDX-License-Identifier: MIT
#include "hosts/app/Snapshot.hpp"

#include "hosts/app/AppContent.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "hosts/qt/PictureFile.hpp"
#include "platform/time/NSTimer.hpp"

#include <QCoreApplication>
#include <optional>

namespace vantor::hosts::app {

namespace {

constexpr double longestWait = 5;    // seconds
constexpr double betweenSamples = 1; // seconds that the processor's share covers

/// Looks at the machine until the page has all it shows; in the demonstration for a minute, which the page of
/// the processor tells of.
void waitForFigures(AppContent& content, bool demo) {
    constexpr int minute = 32;
    const auto done = [&] { return content.isComplete() && content.samples() >= (demo ? minute : 2); };
    std::optional<common::VirtualTime> time;
    if (demo) {
        time.emplace();
    }
    const auto timer = platform::NSTimer::scheduledTimerWithTimeInterval(
        betweenSamples, [&content] { content.refresh(); }, true);
    content.setSeen(true);
    content.refresh();
    (void)(time ? time->turnUntil(done, 2 * minute) : common::turnUntil(done, longestWait));
    timer->invalidate();
}

} // namespace

int writeSnapshot(const Options& options) {
    AppContent content(options.demo);
    content.setAttribute(Qt::WA_DontShowOnScreen);
    const platform::Appearance appearance = options.appearance.value_or(platform::Appearance::light);
    applyLook(content, Look::of(appearance, 1, {}));
    content.setPage(options.page.value_or(PageKind::memory));
    content.resize(usualWidth, usualHeight);
    content.show(); // lays everything out
    waitForFigures(content, options.demo);
    content.animator().settle();
    QCoreApplication::processEvents(); // a list takes its height
    content.resize(usualWidth, std::max(usualHeight, content.tallness()));
    QCoreApplication::processEvents();
    const bool isWhole = common::currentFailures().empty();
    const int status = qt::writePicture(content, *options.snapshot, options.scale, "vantor-app");
    return isWhole ? status : 1;
}

} // namespace vantor::hosts::app
