// SPDX-License-Identifier: MIT
#include "charts/ArcChartStyle.hpp"
#include "hosts/qt/LayerPainter.hpp"
#include "hosts/qt/RingPicture.hpp"
#include "hosts/qt/Theme.hpp"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstdlib>
#include <numbers>
#include <vector>

namespace vantor::hosts::widget {

using namespace qt;

namespace {

using platform::Appearance;

constexpr double pi = std::numbers::pi;
constexpr int side = 100;

platform::Layers ring(double shown, double said, const platform::UIColor& color) {
    ArcChartStyle style;
    style.startAngle = {3 * pi / 4};
    style.endAngle = {pi / 4};
    style.outerRingLineWidth = 2;
    style.outerRingOpacity = 0.3;
    style.innerRingLineWidth = 10;
    style.innerRingColor = color;
    style.title = "Used";
    style.titleTopPadding = 8;
    return style.body({said, shown}, {{8, 8}, {80, 80}});
}

platform::Layers ring(double fraction) {
    return ring(fraction, fraction, platform::UIColor::systemGreenColor());
}

void paintOnto(QImage& image, const platform::Layers& layers, const QRect& clip, const Theme& theme) {
    QPainter painter(&image);
    painter.setClipRect(clip);
    painter.fillRect(clip, theme.card);
    paintLayers(painter, layers, theme, clip);
}

QImage wholePicture(const platform::Layers& layers, const Theme& theme) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    paintOnto(image, layers, image.rect(), theme);
    return image;
}

/// Of any pixel's brightness.
int greatestDifference(const QImage& a, const QImage& b) {
    int greatest = 0;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            greatest = std::max(greatest, std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))));
        }
    }
    return greatest;
}

/// Repainting only what changed must leave the same pixels as painting everything.
TEST(Paint, TheChangedAreaHoldsEveryChange) {
    const Theme theme = Theme::of(Appearance::light, 1, {});
    const std::vector<platform::Layers> pictures{
        ring(0),
        ring(0.005),
        ring(0.3),
        ring(0.31),
        ring(0.74),
        ring(1),
        ring(0.5, 0.52, platform::UIColor::systemRedColor()),
        ring(0.51, 0.52, platform::UIColor::systemRedColor()),
        {},
    };
    for (const auto& before : pictures) {
        for (const auto& after : pictures) {
            QImage image = wholePicture(before, theme);
            const QRect area = changedArea(before, after).toAlignedRect();
            if (!area.isEmpty()) {
                paintOnto(image, after, area, theme);
            }
            // Clipped edges are rounded differently; a piece left out would differ by more than a hundred.
            EXPECT_LE(greatestDifference(image, wholePicture(after, theme)), 24);
        }
    }
}

TEST(Paint, AMovingEndRepaintsOnlyItsNeighbourhood) {
    const auto at = [](double shown) { return ring(shown, 0.6, platform::UIColor::systemGreenColor()); };
    const QRectF area = changedArea(at(0.5), at(0.51));
    EXPECT_LT(area.width() * area.height(), 0.06 * side * side);
    EXPECT_TRUE(changedArea(at(0.5), at(0.5)).isEmpty());
}

/// A ring drawn pixel by pixel, end by end on the way there and back, is the ring that the toolkit draws.
TEST(Paint, AFrameLeavesWhatAWholePaintingWould) {
    const Theme theme = Theme::of(Appearance::light, 1, {});
    const auto at = [](double shown) { return ring(shown, 0.6, platform::UIColor::systemGreenColor()); };
    const auto strokeOf = [&](double shown) { return std::get<platform::StrokeLayer>(at(shown).at(1)); };
    RingPicture still({}, 1, {side, side}, theme, {});
    still.add(at(0.6), theme, 1);
    QImage frame = still.image.copy();
    double shown = 0;
    for (const double next : {0.03, 0.4, 0.42, 0.45, 0.99, 0.7, 0.66, 0.2}) {
        const std::optional<RoundArc> arc = still.arcOnDevice(strokeOf(next), theme);
        ASSERT_TRUE(arc);
        const auto angle = [&](double part) { return arc->start + part * 1.5 * pi; };
        const QRectF area =
            endArea(strokeOf(next).path.arcs.front(), strokeOf(next).lineWidth, angle(shown), angle(next));
        arc->draw(frame, area.toAlignedRect(), still.image, still.at, angle(next));
        RingPicture whole({}, 1, {side, side}, theme, {});
        whole.add(at(next), theme);
        EXPECT_EQ(frame, whole.image) << shown << " to " << next;
        EXPECT_LE(greatestDifference(frame, wholePicture(at(next), theme)), 60) << next; // at soft edges
        shown = next;
    }
}

TEST(Paint, ArcsRunClockwiseFromTheLowerLeft) {
    const Theme theme = Theme::of(Appearance::light, 1, {});
    const QImage image = wholePicture(ring(0.25, 0.25, platform::UIColor::systemRedColor()), theme);
    const QColor red = painted(platform::UIColor::systemRedColor(), Appearance::light);
    EXPECT_EQ(image.pixelColor(8, 48), red);  // the left: a sixth of the way
    EXPECT_NE(image.pixelColor(48, 8), red);  // the top: half of it
    EXPECT_NE(image.pixelColor(88, 48), red); // the right
}

/// Every text can be read on what lies below it, in both appearances and with any accent.
TEST(Paint, TextsAndMarksStandOut) {
    for (const Appearance appearance : {Appearance::light, Appearance::dark}) {
        for (const QColor& accent : {QColor(), QColor(Qt::yellow), QColor(Qt::white), QColor(Qt::black)}) {
            const Theme theme = Theme::of(appearance, 1, accent);
            for (const QColor& ground : {theme.card, theme.fill, theme.hoverFill, theme.pressedFill}) {
                EXPECT_GE(contrast(theme.text, ground), 4.5);
            }
            EXPECT_GE(contrast(theme.secondaryText, theme.card), 4.5);
            EXPECT_GE(contrast(theme.accent, theme.card), 3.0) << theme.accent.name().toStdString();
        }
    }
}

} // namespace

} // namespace vantor::hosts::widget
