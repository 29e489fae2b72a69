// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/CardLook.hpp"

#include <QLabel>
#include <QTimer>

namespace vantor::hosts::qt {

/// A line over the lower edge of the card that goes away by itself.
class MessageLine final : public QLabel {
public:
    explicit MessageLine(QWidget* card);

    void setLook(const CardLook& look);
    void showText(const QString& text);
    /// Keeps its place at the card's lower edge.
    void place();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CardLook m_look;
    QTimer m_end;
};

} // namespace vantor::hosts::qt
