// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Picture.hpp"

#include "hosts/terminal/picture/Layout.hpp"
#include "hosts/terminal/picture/Parts.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace vantor::hosts::terminal {

using platform::Instant;
using platform::LinearAnimation;

namespace {
constexpr int usualHeight = 24;  // of a terminal, in rows
constexpr double mostSteps = 20; // a second: what moves by a few dots in each looks smooth

/// The keys that are offered: where both modes look alike, the one that changes it does nothing.
std::vector<Scene::Key> keysFor(const Scene& scene, Size size, const Layout& layout) {
    std::vector<Scene::Key> keys = scene.keys;
    std::erase_if(keys, [](const Scene::Key& key) { return key.isQuiet; });
    if (layoutFor(scene, size, !scene.isExpanded).arrangement == layout.arrangement) {
        std::erase_if(keys,
                      [](const Scene::Key& key) { return key.action == Action(HostAction::changeMode); });
    }
    return keys;
}

/// The last rows of the screen, as many as the keys take.
Box keysAt(const std::vector<Scene::Key>& keys, Size size, int most) {
    const int rows = keyRows(keys, size.width, most);
    return {0, size.height - rows, size.width, rows};
}
} // namespace

std::optional<Action> Picture::actionAt(int column, int row) const {
    const auto found = std::ranges::find_if(areas, [&](const HitArea& area) {
        return column >= area.column && column < area.column + area.width && row >= area.row &&
               row < area.row + area.height;
    });
    return found != areas.end() ? std::optional(found->action) : std::nullopt;
}

Picture drawPicture(const Scene& scene, Size size, const Look& look, Instant now, const Picture& before) {
    Picture picture;
    picture.look = look;
    picture.grid = Grid({std::max(size.width, 0), std::max(size.height, 0)});
    if (size.width < 1 || size.height < 1) {
        return picture;
    }
    if (scene.isPale) {
        now = Instant::max(); // nothing moves any more
    }
    Sheet sheet(picture, look, &before);
    Layout layout = layoutFor(scene, size, scene.isExpanded);
    bool hasHost = false; // in a row that is kept for it
    if (scene.isElsewhere) {
        const Layout lower = layoutFor(scene, {size.width, size.height - 1}, scene.isExpanded);
        hasHost = lower.hasKeys;
        layout = hasHost ? lower : layout;
    }
    const std::vector<Scene::Key> keys = keysFor(scene, size, layout);
    // A second row of keys where there is room for it and for a warning; on less than a whole screen only
    // with a blank line above.
    const int spare = size.height - layout.height;
    const Box bottom = layout.hasKeys
                           ? keysAt(keys, size, spare >= (size.height < usualHeight ? 4 : 3) ? 2 : 1)
                           : Box{0, size.height, 0, 0};
    // Below the machine's name, unless the last row is wanted for a warning.
    const int lowest = bottom.row - layout.height;
    const int top = std::max(lowest > 0 && (hasHost || scene.warning.empty()) ? 1 : 0, lowest / 2);
    switch (layout.arrangement) {
    case Arrangement::bars:
    case Arrangement::listed:
        drawBars(sheet, scene, layout, top, now);
        break;
    case Arrangement::line:
        drawLine(sheet, scene, layout, top);
        break;
    default:
        drawRings(sheet, scene, layout, top, now);
    }
    if (scene.isPale) {
        picture.grid.repaint(captionInk(look));
        for (ChartPlace& place : picture.charts) {
            place.layers = {}; // no later picture is to take these rings over
        }
    }
    if (top > 0 && layout.hasKeys) {
        sheet.text({0, 0, size.width}, scene.host, Align::center, captionInk(look));
    }
    if (layout.hasKeys) {
        if (top + layout.height < bottom.row) {
            sheet.text({0, bottom.row - 1, size.width}, scene.warning, Align::center, strongInk());
        }
        drawKeys(sheet, keys, scene.notice, bottom);
    }
    return picture;
}

void stepPicture(Picture& picture, const Scene& scene, const Look& look, Instant before, Instant now) {
    if (scene.isPale) {
        return;
    }
    Sheet sheet(picture, look);
    for (ChartPlace& place : picture.charts) {
        const Scene::Section& section = scene.sections[place.section];
        if (!section.chart || !section.chart->animation().isRunningAt(before)) {
            continue;
        }
        if (place.isBar) {
            drawBar(sheet, section, place.box, now);
            continue;
        }
        platform::Layers layers = ringLayers(section, now);
        if (layers == place.layers) {
            continue;
        }
        place.layers = std::move(layers);
        for (int row = 0; row < place.box.height; ++row) {
            for (int column = 0; column < place.box.width; ++column) {
                picture.grid.put(sheet.leftOf(place.box) + column, place.box.row + row, U' ', {});
            }
        }
        drawRing(sheet, section, place);
    }
}

std::optional<Instant> nextStep(const Scene& scene, const Picture& picture, Instant now) {
    std::optional<Instant> next;
    for (const Scene::Section& section : scene.sections) {
        const LinearAnimation animation = section.chart ? section.chart->animation() : LinearAnimation{};
        if (!animation.isRunningAt(now)) {
            continue;
        }
        const double dots = std::ceil(std::abs(animation.to - animation.from) * picture.stepsPerUnit);
        const double steps = std::clamp(dots, 1.0, std::max(1.0, mostSteps * animation.duration));
        const double done = std::chrono::duration<double>(now - animation.start).count() / animation.duration;
        // A step that is due within a millionth counts as done: the clock has whole nanoseconds.
        const double step = std::min(std::floor(done * steps + 1e-6) + 1, steps);
        const std::chrono::duration<double> offset(animation.duration * step / steps);
        const Instant at =
            animation.start + std::chrono::ceil<Instant::duration>(offset) + std::chrono::nanoseconds(1);
        next = next ? std::min(*next, at) : at;
    }
    return next;
}

} // namespace vantor::hosts::terminal
