// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/desktop/RingView.hpp"

#include <QTimer>
#include <vector>

namespace vantor::desktop {

/// Moves all rings with one timer. A frame comes when the fastest ring's end has half a device pixel to go,
/// never more often than sixty times a second, and not at all where there is nothing to see: at rest, off
/// screen or with motion switched off.
class RingAnimator {
public:
    explicit RingAnimator(std::vector<RingView*> rings);

    /// A chart changed: shows its new figures at once and sets the ring moving.
    void start();
    /// Off: rings jump to their new place.
    void setMotion(bool on);
    /// Ends all motion where it leads.
    void settle();

    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }
    /// Frames drawn since the start, for measurements and tests.
    [[nodiscard]] long frames() const { return m_frames; }

private:
    void advance();

    std::vector<RingView*> m_rings;
    QTimer m_timer;
    bool m_motion = true;
    long m_frames = 0;
};

} // namespace vantor::desktop
