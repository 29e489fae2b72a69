// SPDX-License-Identifier: MIT
#include "charts/LevelColor.hpp"

#include "charts/HexColor.hpp"
#include "platform/core/Checked.hpp"

namespace vantor {

using platform::UIColor;

namespace {

UIColor makeLevelOrange() {
    const std::optional<UIColor> orange = colorFromHex("FE9226", 1.0);
    if (!orange) {
        platform::fatalStop("the orange of the level bands is no colour");
    }
    return *orange;
}

} // namespace

const UIColor& levelOrange() {
    static const UIColor orange = makeLevelOrange();
    return orange;
}

Level levelOf(std::int64_t percent) {
    if (percent >= 0) {
        return percent >= 84   ? Level::red
               : percent >= 68 ? Level::orange
               : percent >= 51 ? Level::yellow
                               : Level::green;
    }
    const std::int64_t magnitude =
        platform::checkedSubtract<std::int64_t>(0, percent, "the magnitude of a level overflows");
    return magnitude <= 16   ? Level::red
           : magnitude <= 33 ? Level::orange
           : magnitude <= 50 ? Level::yellow
                             : Level::green;
}

UIColor levelColor(std::int64_t percent) {
    switch (levelOf(percent)) {
    case Level::green:
        return UIColor::systemGreenColor();
    case Level::yellow:
        return UIColor::systemYellowColor();
    case Level::orange:
        return levelOrange();
    case Level::red:
        break;
    }
    return UIColor::systemRedColor();
}

} // namespace vantor
