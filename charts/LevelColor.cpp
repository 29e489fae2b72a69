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

UIColor levelColor(std::int64_t percent) {
    if (percent >= 0) {
        return percent >= 84   ? UIColor::systemRedColor()
               : percent >= 68 ? levelOrange()
               : percent >= 51 ? UIColor::systemYellowColor()
                               : UIColor::systemGreenColor();
    }
    const std::int64_t magnitude =
        platform::checkedSubtract<std::int64_t>(0, percent, "the magnitude of a level overflows");
    return magnitude <= 16   ? UIColor::systemRedColor()
           : magnitude <= 33 ? levelOrange()
           : magnitude <= 50 ? UIColor::systemYellowColor()
                             : UIColor::systemGreenColor();
}

} // namespace vantor
