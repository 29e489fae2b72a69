// SPDX-License-Identifier: MIT
#include "platform/drawing/UIColor.hpp"

#include <algorithm>
#include <array>

namespace vantor::platform {

namespace {

constexpr RGBA bytes(int red, int green, int blue, double alpha = 1.0) {
    return {red / 255.0, green / 255.0, blue / 255.0, alpha};
}

double clamped(double component) {
    return component >= 0 ? std::min(component, 1.0) : 0.0; // not-a-number paints as 0
}

struct PlainName {
    std::string_view name;
    RGBA value;
};

// The named colours that look the same in light and dark.
constexpr std::array plainNames{
    PlainName{"redColor", bytes(255, 0, 0)},       PlainName{"greenColor", bytes(0, 255, 0)},
    PlainName{"blueColor", bytes(0, 0, 255)},      PlainName{"cyanColor", bytes(0, 255, 255)},
    PlainName{"yellowColor", bytes(255, 255, 0)},  PlainName{"magentaColor", bytes(255, 0, 255)},
    PlainName{"orangeColor", bytes(255, 128, 0)},  PlainName{"purpleColor", bytes(128, 0, 128)},
    PlainName{"brownColor", {0.6, 0.4, 0.2, 1.0}},
};

struct GrayName {
    std::string_view name;
    double white;
};

constexpr std::array grayNames{
    GrayName{"blackColor", 0.0},           GrayName{"darkGrayColor", 1.0 / 3.0}, GrayName{"grayColor", 0.5},
    GrayName{"lightGrayColor", 2.0 / 3.0}, GrayName{"whiteColor", 1.0},
};

} // namespace

UIColor UIColor::colorWithRed(double red, double green, double blue, double alpha) {
    UIColor color;
    color.m_model = Model::rgb;
    std::ranges::copy(std::array{red, green, blue, alpha}, color.m_light);
    std::ranges::copy(color.m_light, color.m_dark);
    return color;
}

UIColor UIColor::colorWithWhite(double white, double alpha) {
    UIColor color = colorWithRed(white, white, white, alpha);
    color.m_model = Model::gray;
    return color;
}

UIColor UIColor::dynamic(const RGBA& light, const RGBA& dark) {
    UIColor color = colorWithRed(light.red, light.green, light.blue, light.alpha);
    color.m_model = Model::dynamic;
    std::ranges::copy(std::array{dark.red, dark.green, dark.blue, dark.alpha}, color.m_dark);
    return color;
}

UIColor UIColor::clearColor() {
    return colorWithWhite(0, 0);
}
UIColor UIColor::systemGreenColor() {
    return dynamic(bytes(52, 199, 89), bytes(48, 209, 88));
}
UIColor UIColor::systemYellowColor() {
    return dynamic(bytes(255, 204, 0), bytes(255, 214, 10));
}
UIColor UIColor::systemRedColor() {
    return dynamic(bytes(255, 59, 48), bytes(255, 69, 58));
}
UIColor UIColor::labelColor() {
    return dynamic(bytes(0, 0, 0), bytes(255, 255, 255));
}
UIColor UIColor::secondaryLabelColor() {
    return dynamic(bytes(60, 60, 67, 0.6), bytes(235, 235, 245, 0.6));
}

std::optional<UIColor> UIColor::named(std::string_view name) {
    if (name == "clearColor") {
        return clearColor();
    }
    if (name == "systemGreenColor") {
        return systemGreenColor();
    }
    if (name == "systemYellowColor") {
        return systemYellowColor();
    }
    if (name == "systemRedColor") {
        return systemRedColor();
    }
    if (name == "labelColor") {
        return labelColor();
    }
    if (name == "secondaryLabelColor") {
        return secondaryLabelColor();
    }
    for (const PlainName& plain : plainNames) {
        if (plain.name == name) {
            return colorWithRed(plain.value.red, plain.value.green, plain.value.blue, plain.value.alpha);
        }
    }
    for (const GrayName& gray : grayNames) {
        if (gray.name == name) {
            return colorWithWhite(gray.white, 1.0);
        }
    }
    return std::nullopt;
}

RGBA UIColor::resolved(Appearance appearance) const {
    const double* const c = appearance == Appearance::dark ? m_dark : m_light;
    return {clamped(c[0]), clamped(c[1]), clamped(c[2]), clamped(c[3])};
}

} // namespace vantor::platform
