// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/Theme.hpp"

#include <array>

class QWidget;

namespace vantor::hosts::app {

namespace TextSize = qt::TextSize;

/// Lengths of the app's grid, in points.
namespace Grid {
inline constexpr int unit = 8;
inline constexpr int sidebar = 208;
inline constexpr int column = 644; ///< of cards; wider windows leave more room beside it
inline constexpr int margin = 24;  ///< around the column and within a card
inline constexpr int gap = 16;     ///< between cards
inline constexpr int row = 48;     ///< of an application
} // namespace Grid

/// How the app is painted: the kit's theme in the app's colours, and what only the app has.
struct Look {
    qt::Theme theme; ///< its backdrop is the ground below the cards
    QColor selection;
    QColor destructive;          ///< a text; at least 4.5:1 on card, selection and button
    std::array<QColor, 4> parts; ///< of a bar, from what is used to what is free
    QColor off;                  ///< the ground of a switch that is off

    /// `accent` may be invalid: then it is the blue of the bars.
    static Look of(platform::Appearance appearance, double pointScale, const QColor& accent);

    [[nodiscard]] int pixels(double points) const { return theme.pixels(points); }
};

/// A widget that is told how to paint itself.
class Looked {
public:
    Looked() = default;
    virtual ~Looked() = default;
    Looked(const Looked&) = delete;
    Looked& operator=(const Looked&) = delete;
    virtual void setLook(const Look& look) = 0;
};

/// Tells all widgets below this one, the outermost first.
void applyLook(QWidget& top, const Look& look);

} // namespace vantor::hosts::app
