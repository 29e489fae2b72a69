// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Look.hpp"

#include <QWidget>

namespace vantor::hosts::app {

/// A rounded ground with a hairline around it. Its contents are its own affair.
class Card final : public QWidget, public Looked {
public:
    void setLook(const Look& look) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Look m_look;
};

/// A line of one pixel from side to side.
class Rule final : public QWidget, public Looked {
public:
    Rule();
    void setLook(const Look& look) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color;
};

} // namespace vantor::hosts::app
