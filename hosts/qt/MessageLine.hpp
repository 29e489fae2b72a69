// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/Theme.hpp"

#include <QLabel>
#include <QTimer>

namespace vantor::hosts::qt {

/// A line over the lower edge of the card that goes away by itself.
class MessageLine final : public QLabel {
    Q_OBJECT // or looking for one finds any label
        public : explicit MessageLine(QWidget* card);

    void setTheme(const Theme& theme);
    void showText(const QString& text);
    /// Moves it to the card's lower edge: call it when the card's size has changed.
    void place();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Theme m_theme;
    QTimer m_end;
};

} // namespace vantor::hosts::qt
