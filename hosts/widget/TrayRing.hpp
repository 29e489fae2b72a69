// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/RingView.hpp"
#include "hosts/qt/Theme.hpp"

#include <QSystemTrayIcon>
#include <vector>

class QMenu;

namespace vantor::hosts::widget {

/// A ring in the tray: the first chart as an icon, all figures of the rings as its tooltip.
class TrayRing {
public:
    TrayRing(std::vector<qt::RingView*> rings, QMenu& menu, std::function<void()> pressed);

    /// Draws the ring anew where its percentage or colour changed.
    void update(const qt::Theme& theme);

private:
    std::vector<qt::RingView*> m_rings;
    QSystemTrayIcon m_icon;
    platform::Layers m_drawn;
};

} // namespace vantor::hosts::widget
