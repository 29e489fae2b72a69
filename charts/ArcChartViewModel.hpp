// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/LinearAnimation.hpp"
#include "platform/drawing/UIColor.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vantor {

/// What one ring shows: a fraction and a colour. Observers hear of a change before it is made. Main thread
/// only.
class ArcChartViewModel {
public:
    /// Tells the user's own ring colour, and is asked at each change.
    using OwnColor = std::optional<platform::UIColor> (*)();

    /// Fraction 0, in the user's own ring colour or else system green. Without an argument that colour is the
    /// stored one, of which an archive of anything else is fatal.
    ArcChartViewModel();
    explicit ArcChartViewModel(OwnColor ownColor);
    ArcChartViewModel(const ArcChartViewModel&) = delete;
    ArcChartViewModel& operator=(const ArcChartViewModel&) = delete;

    /// The fraction shown once the ring has come to rest; 1 is a full ring. May be not-a-number or above 1.
    [[nodiscard]] double progress() const { return m_progress; }
    /// The fraction on its way there.
    [[nodiscard]] const platform::LinearAnimation& animation() const { return m_animation; }
    [[nodiscard]] const platform::UIColor& innerRingColor() const { return m_innerRingColor; }

    /// Sends the ring to the magnitude of `value` within one second and gives it the user's own colour, else
    /// the colour of the signed level in whole percent, cut towards zero. Not-a-number keeps the colour; a
    /// level that does not fit into a signed 64-bit number is fatal.
    void setProgress(double value);

    /// Calls `willChange` before each change of either property for as long as the returned object lives.
    [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> willChange);

private:
    void announce();
    void setInnerRingColor(const platform::UIColor& color);

    OwnColor m_ownColor;
    double m_progress = 0;
    platform::LinearAnimation m_animation;
    platform::UIColor m_innerRingColor;
    std::vector<std::weak_ptr<std::function<void()>>> m_observers;
};

} // namespace vantor
