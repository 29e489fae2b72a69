// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/desktop/CardLook.hpp"
#include "hosts/desktop/RingView.hpp"

#include <QSystemTrayIcon>
#include <vector>

class QMenu;

namespace vantor::desktop {

/// A ring in the tray: the first chart as an icon, all figures of the rings as its tooltip.
class TrayRing {
public:
    TrayRing(std::vector<RingView*> rings, QMenu& menu, std::function<void()> pressed);

    /// Draws the ring anew where its percentage or colour changed.
    void update(const CardLook& look);

private:
    std::vector<RingView*> m_rings;
    QSystemTrayIcon m_icon;
    platform::Layers m_drawn;
};

} // namespace vantor::desktop
