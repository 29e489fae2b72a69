// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/RingView.hpp"
#include "hosts/qt/Theme.hpp"
#include "platform/machine/Source.hpp"

#include <QSystemTrayIcon>
#include <functional>
#include <vector>

class QMenu;

namespace vantor::hosts::widget {

/// A ring in the tray: the first chart as an icon, all figures of the rings as its tooltip. A panel shows it
/// in a few pixels and in a colour of its own, so it is drawn heavier than on the card, over a grey that can
/// be seen on light and dark.
class TrayRing {
public:
    /// The rings in the order of the sections that have one.
    TrayRing(std::vector<qt::RingView*> rings, QMenu& menu, std::function<void()> pressed);

    /// Shows a notice beside the icon; `pressed` hears of a press on it.
    void tell(const QString& text, std::function<void()> pressed);

    /// Draws the ring anew where its percentage or colour changed. One whose source cannot be read is empty,
    /// and the tooltip says so.
    void update(const qt::Theme& theme, const std::vector<platform::SourceFailure>& failures);

private:
    std::vector<qt::RingView*> m_rings;
    QSystemTrayIcon m_icon;
    platform::Layers m_drawn;
    bool m_hasFailed = false;
};

/// A ring as an icon in the usual sizes: as far round as the last of `strokes`, and in its colour. Without
/// strokes its ground alone.
[[nodiscard]] QIcon ringIcon(const platform::Layers& strokes, platform::Appearance appearance);

} // namespace vantor::hosts::widget
