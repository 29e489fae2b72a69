// SPDX-License-Identifier: MIT
#include "charts/ArcChartViewModel.hpp"

#include "charts/LevelColor.hpp"
#include "platform/core/FatalStop.hpp"
#include "platform/time/RunLoop.hpp"
#include "settings/ChartColor.hpp"

#include <cmath>
#include <cstdint>
#include <utility>

namespace vantor {

namespace {

constexpr double animationSeconds = 1.0;

std::int64_t wholePercent(double value) {
    const double percent = value * 100.0;
    // The bounds are the doubles next to the range: -2^63 itself fits, the one below it and 2^63 do not.
    if (!(percent > -9223372036854777856.0) || !(percent < 9223372036854775808.0)) {
        platform::fatalStop("the level of a ring does not fit in a signed 64-bit number");
    }
    return static_cast<std::int64_t>(percent);
}

} // namespace

ArcChartViewModel::ArcChartViewModel() : ArcChartViewModel(storedChartColor) {}

ArcChartViewModel::ArcChartViewModel(OwnColor ownColor)
    : m_ownColor(ownColor), m_innerRingColor(ownColor().value_or(platform::UIColor::systemGreenColor())) {}

void ArcChartViewModel::setProgress(double value) {
    announce();
    m_progress = std::abs(value);
    m_animation.retarget(m_progress, platform::RunLoop::main().now(), animationSeconds);
    if (const std::optional<platform::UIColor> own = m_ownColor()) {
        setInnerRingColor(*own);
    } else if (!std::isnan(value)) {
        setInnerRingColor(levelColor(wholePercent(value)));
    }
}

void ArcChartViewModel::setInnerRingColor(const platform::UIColor& color) {
    announce();
    m_innerRingColor = color;
}

std::shared_ptr<void> ArcChartViewModel::observe(std::function<void()> willChange) {
    auto observer = std::make_shared<std::function<void()>>(std::move(willChange));
    std::erase_if(m_observers, [](const auto& gone) { return gone.expired(); });
    m_observers.push_back(observer);
    return observer;
}

void ArcChartViewModel::announce() {
    for (const auto& weak : m_observers) {
        if (const auto observer = weak.lock()) {
            (*observer)();
        }
    }
}

} // namespace vantor
