// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <functional>
#include <string_view>

namespace vantor::hosts::widget {

class ReportCard;

/// The card's actions and what its window can be asked for; a ring in the tray shares it.
class WidgetMenu final : public QMenu {
public:
    /// `offersOnTop`: whether the window can be kept above others and below them again.
    WidgetMenu(ReportCard& card, QWidget& window, bool offersOnTop);

private:
    void fill();
    void addToggle(std::string_view key, bool on, std::function<void(bool)> toggled);

    ReportCard& m_card;
    QWidget& m_window;
    const bool m_offersOnTop;
};

} // namespace vantor::hosts::widget
