// SPDX-License-Identifier: MIT
#include "hosts/wall/WallLook.hpp"

#include <algorithm>

namespace vantor::hosts::wall {

namespace {

/// In points.
struct Room {
    double width, height; ///< of the picture
    double gapX, gapY;
    double heading;
};
constexpr double closeGap = 4, closeHeading = 27;
constexpr std::array<Room, densityCount> rooms{
    {{391, 102, 9, 8, 34}, {120, 68, 9, 8, 34}, {36, 36, 4, 4, 32}, {14, 14, 2, 2, 30}, {10, 10, 2, 2, 30}}};

} // namespace

WallLook WallLook::of(platform::Appearance appearance, double pointScale, const QColor& accent) {
    WallLook look;
    look.theme = qt::Theme::ofGround(appearance, pointScale, accent);
    look.destructive =
        appearance == platform::Appearance::light ? QColor(0xC4, 0x22, 0x1A) : QColor(0xFF, 0x80, 0x78);
    return look;
}

QColor WallLook::band(fleet::Band band) const {
    return qt::painted(fleet::bandColor(band, isDark()), theme.appearance);
}

QColor WallLook::loudBand(fleet::Band band) const {
    if (band == fleet::Band::yellow) {
        return isDark() ? QColor(0xFF, 0xD6, 0x0A) : QColor(0xFF, 0xCC, 0x00);
    }
    if (band == fleet::Band::green) {
        return isDark() ? QColor(0x30, 0xD1, 0x58) : QColor(0x34, 0xC7, 0x59);
    }
    return band == fleet::Band::stale ? theme.secondaryText : this->band(band);
}

QColor WallLook::inkOn(const QColor& ground) {
    return qt::contrast(Qt::white, ground) >= qt::contrast(Qt::black, ground) ? Qt::white : Qt::black;
}

fleet::WallStep WallLook::step(Density density, Spacing spacing) const {
    const Room& room = rooms.at(static_cast<std::size_t>(density));
    const bool isClose = spacing == Spacing::close;
    return {pixels(room.width) + pixels(room.gapX),
            pixels(room.height) + pixels(isClose ? std::min(room.gapY, closeGap) : room.gapY),
            pixels(isClose ? closeHeading : room.heading)};
}

QSize WallLook::cell(Density density) const {
    const Room& room = rooms.at(static_cast<std::size_t>(density));
    return {pixels(room.width), pixels(room.height)};
}

} // namespace vantor::hosts::wall
