// SPDX-License-Identifier: MIT
#include "hosts/widget/Snapshot.hpp"

#include "hosts/common/Failures.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "hosts/common/Pause.hpp"
#include "hosts/qt/PictureFile.hpp"
#include "hosts/wall/Wall.hpp"
#include "hosts/widget/Readiness.hpp"
#include "hosts/widget/WidgetHost.hpp"

#include <QCoreApplication>
#include <algorithm>

namespace vantor::hosts::widget {

namespace {

constexpr double longestWait = 3.7; // seconds
constexpr double tallest = 4096;    // points that a file offers in height

// Of a wall: seconds until the slowest has answered or failed to, and points.
constexpr double longestFleetWait = 15;
constexpr int wallWidth = 1200, wallHeight = 760, tallestWall = 8192;

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

    const platform::Appearance appearance = fixedAppearance(options).value_or(platform::Appearance::light);
    using Mode = platform::NCWidgetDisplayMode;
    host.setTheme(qt::Theme::of(appearance, 1, {}));
    host.setMode(options.expanded.value_or(true) ? Mode::expanded : Mode::compact, tallest);
    WidgetCard& card = host.card();
    card.setAttribute(Qt::WA_DontShowOnScreen);
    card.show(); // lays everything out
    card.animator().settle();

    const bool isWhole = common::currentFailures().empty();
    const int status = qt::writePicture(card, *options.snapshot, options.scale, "vantor-widget");
    return isWhole ? status : 1;
}

int writeWall(const Options& options, common::FleetHost& fleet) {
    platform::FleetSource& source = fleet.source();
    wall::Wall wall(source, fleet.name());
    wall.setAttribute(Qt::WA_DontShowOnScreen);
    const platform::Appearance appearance = fixedAppearance(options).value_or(platform::Appearance::light);
    wall.setLook(wall::WallLook::of(appearance, 1, {}));
    wall::arrange(wall, options.fleet.sort, options.fleet.groupBy);
    wall.view().setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the picture is as high as the wall
    wall.resize(wallWidth, wallHeight);
    wall.show(); // lays everything out
    wall.setSeen(true);
    const bool isSettled = common::turnUntil([&source] { return source.isSettled(); }, longestFleetWait);
    wall.resize(wallWidth, std::clamp(wall.wholeHeight(), wallHeight, tallestWall));
    QCoreApplication::processEvents();
    const auto snapshot = source.snapshot();
    const bool isWhole =
        isSettled && snapshot != nullptr &&
        std::ranges::none_of(snapshot->sources, [](const auto& origin) { return origin.isSilent; });
    const int status = qt::writePicture(wall, *options.snapshot, options.scale, "vantor-widget");
    return isWhole ? status : 1;
}

} // namespace vantor::hosts::widget
