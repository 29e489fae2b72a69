// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vantor::platform {

/// Which of its two values a named colour takes.
enum class Appearance : std::uint8_t { light, dark };

/// A colour ready to paint: sRGB components and opacity, each within 0...1.
struct RGBA {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    bool operator==(const RGBA&) const = default;
};

/// A colour value: gray, RGB or one of the platform's named colours, which differ between light and dark.
/// Components outside 0...1 (wide gamut) are kept and only clamped when painted.
class UIColor {
public:
    static UIColor colorWithRed(double red, double green, double blue, double alpha);
    static UIColor colorWithWhite(double white, double alpha);

    static UIColor clearColor(); ///< gray 0, opacity 0
    static UIColor systemGreenColor();
    static UIColor systemYellowColor();
    static UIColor systemRedColor();
    static UIColor labelColor();
    static UIColor secondaryLabelColor(); ///< also the declarative framework's secondary colour

    /// The colour behind an archived name such as "systemGreenColor", "clearColor" or "redColor"; absent for
    /// a name that this platform does not know.
    static std::optional<UIColor> named(std::string_view name);

    /// Colour equality (`isEqual:`): the same model and the same components, or the same named colour. Models
    /// are never equal to each other, so RGB (0, 0, 0, 0) is not the clear colour.
    bool operator==(const UIColor&) const = default;

    /// The value to paint with.
    [[nodiscard]] RGBA resolved(Appearance appearance) const;

    /// The stored components, unclamped: for gray, red = green = blue = white.
    [[nodiscard]] double red() const { return m_light[0]; }
    [[nodiscard]] double green() const { return m_light[1]; }
    [[nodiscard]] double blue() const { return m_light[2]; }
    [[nodiscard]] double alpha() const { return m_light[3]; }
    [[nodiscard]] bool isGray() const { return m_model == Model::gray; }

private:
    enum class Model : std::uint8_t { gray, rgb, dynamic };
    UIColor() = default;
    static UIColor dynamic(const RGBA& light, const RGBA& dark);

    Model m_model = Model::gray;
    double m_light[4] = {0, 0, 0, 0};
    double m_dark[4] = {0, 0, 0, 0};
};

} // namespace vantor::platform
