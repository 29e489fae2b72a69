// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"

#include <QColor>
#include <QFont>
#include <QPalette>

namespace vantor::hosts::qt {

/// The sizes of the type scale of a card, in points.
namespace TypeSize {
inline constexpr double number = 17;  ///< the percentage within a ring
inline constexpr double body = 13;    ///< captions, figures, buttons
inline constexpr double heading = 12; ///< of a section; bold
inline constexpr double small = 11;   ///< ring captions, what stands beside a heading, messages
} // namespace TypeSize

/// The same of a large window, which is read from further away.
namespace TextSize {
inline constexpr double figure = 28; ///< the one figure that a page is about
inline constexpr double title = 20;  ///< within a large ring too
inline constexpr double whole = 17;  ///< what the figure is a part of
inline constexpr double body = 15;
inline constexpr double label = 13;
inline constexpr double caption = 12;
} // namespace TextSize

/// How a window of ours is painted: colours for light or dark, the desktop's accent, and how many logical
/// pixels a point has (1, or more where the desktop asks for larger text).
struct Theme {
    platform::Appearance appearance = platform::Appearance::light;
    double pointScale = 1;
    QColor backdrop; ///< behind a card, in a window with a frame
    QColor card;
    QColor edge; ///< the hairline around a card, which sets it off from a ground of its own colour
    QColor text;
    QColor secondaryText; ///< readable (4.5:1) on the card
    QColor fill;          ///< a button at rest
    QColor hoverFill;
    QColor pressedFill;
    QColor separator;
    QColor accent; ///< focus and pressed marks; at least 3:1 on the card

    /// The theme of an appearance. `accent` may be invalid: then it is the platform's blue.
    static Theme of(platform::Appearance appearance, double pointScale, const QColor& accent);
    /// The same for a large window, on whose ground several cards stand. `accent` may be invalid: then it is
    /// a quieter blue.
    static Theme ofGround(platform::Appearance appearance, double pointScale, const QColor& accent);

    /// What the toolkit paints itself with, such as menus and tooltips.
    [[nodiscard]] QPalette palette() const;
    /// The same for a menu, whose ground stands out from the card where that is dark.
    [[nodiscard]] QPalette menuPalette() const;
    [[nodiscard]] QFont font(double points, QFont::Weight weight = QFont::Normal) const;
    [[nodiscard]] int pixels(double points) const; ///< whole logical pixels
};

/// What the toolkit's own theme looks like, for desktops that do not say.
[[nodiscard]] platform::Appearance toolkitAppearance();

/// How much larger than usual the desktop wants its texts, 1...3.
[[nodiscard]] double desktopTextScale();

[[nodiscard]] QColor painted(const platform::UIColor& color, platform::Appearance appearance,
                             double opacity = 1);

/// The contrast ratio of two opaque colours (WCAG), 1...21.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);

} // namespace vantor::hosts::qt
