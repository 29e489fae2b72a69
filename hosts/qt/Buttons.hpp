// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/Theme.hpp"

#include <QPushButton>
#include <QTimer>
#include <cstdint>

namespace vantor::hosts::qt {

/// Whether to show the focus that an event brings: where it came by the keyboard, yes; where the window
/// became active again or a menu closed, as `before`; else no.
[[nodiscard]] bool isKeyboardFocus(const QFocusEvent& event, bool before);

/// What the buttons of the card share: their theme, and a short confirmation of a press.
class Button : public QPushButton {
public:
    explicit Button(QWidget* parent);

    void setTheme(const Theme& theme);
    /// Confirms a press: for a moment a tick, and `text` where there is room, take the place of what is
    /// there.
    void confirm(const QString& text);

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] const Theme& theme() const { return m_theme; }
    [[nodiscard]] bool isConfirming() const { return m_confirmation.isActive(); }
    [[nodiscard]] const QString& confirmation() const { return m_confirmationText; }
    void paintShape(QPainter& painter, double radius) const;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    Theme m_theme;
    bool m_keyboardFocus = false;
    QTimer m_confirmation;
    QString m_confirmationText;
};

/// A wide button with a text.
class PillButton final : public Button {
public:
    explicit PillButton(QWidget* parent = nullptr) : Button(parent) {}
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

enum class Glyph : std::uint8_t { refresh, more, less, tick };

/// A round button with a drawn sign. Its text is its tooltip, and its name to screen readers.
class GlyphButton final : public Button {
public:
    explicit GlyphButton(QWidget* parent = nullptr) : Button(parent) {}
    void setGlyph(Glyph glyph);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Glyph m_glyph = Glyph::refresh;
};

} // namespace vantor::hosts::qt
