// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Look.hpp"

#include <QAbstractButton>
#include <QLineEdit>
#include <optional>

namespace vantor::hosts::app {

/// A switch: on or off.
class Switch final : public QAbstractButton, public Looked {
    Q_OBJECT

public:
    explicit Switch(const QString& name);
    void setLook(const Look& look) override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    Look m_look;
    bool m_keyboardFocus = false;
};

/// A box with or without a tick.
class Tick final : public QAbstractButton, public Looked {
    Q_OBJECT

public:
    explicit Tick(const QString& name);
    void setLook(const Look& look) override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    Look m_look;
    bool m_keyboardFocus = false;
};

/// A short text to type over. A text that cannot be taken has a frame that says so.
class Field final : public QLineEdit, public Looked {
    Q_OBJECT

public:
    explicit Field(const QString& name);
    void setRefused(bool refused);
    [[nodiscard]] bool isRefused() const { return m_refused; }
    void setLook(const Look& look) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Look m_look;
    bool m_refused = false;
};

/// A round patch of one colour, or of the four that the rings take by themselves; opens the choice.
class ColorButton final : public QAbstractButton, public Looked {
    Q_OBJECT

public:
    explicit ColorButton(const QString& name);
    void setColor(const std::optional<QColor>& color);
    void setLook(const Look& look) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    Look m_look;
    std::optional<QColor> m_color;
    bool m_keyboardFocus = false;
};

} // namespace vantor::hosts::app
