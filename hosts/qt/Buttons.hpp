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

/// What the buttons of the card share: their theme and their ground.
class Button : public QPushButton {
public:
    explicit Button(QWidget* parent);

    void setTheme(const Theme& theme);
    /// A quiet one does not invite to be pressed, though it answers: it has no ground and no arrow.
    void setQuiet(bool quiet);
    [[nodiscard]] bool isQuiet() const { return m_quiet; }

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] const Theme& theme() const { return m_theme; }
    /// Of its text, in points.
    [[nodiscard]] virtual double textSize() const { return TypeSize::body; }
    [[nodiscard]] bool showsFocus() const;
    /// Of its text and signs, in the button's state.
    [[nodiscard]] const QColor& ink() const { return m_quiet ? m_theme.secondaryText : m_theme.text; }
    /// The ground in the colour of the button's state, and a frame on the focus.
    void paintShape(QPainter& painter, double radius) const;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    Theme m_theme;
    bool m_keyboardFocus = false;
    bool m_quiet = false;
};

/// A wide button with a text.
class PillButton final : public Button {
public:
    explicit PillButton(QWidget* parent = nullptr) : Button(parent) {}
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A short caption with an arrow, at the end of a heading: the heading's figure, or what is to be had beside
/// it. Its text says in full what a press does: to screen readers, to menus, and as its tooltip.
class HeadingButton final : public Button {
public:
    explicit HeadingButton(QWidget* parent = nullptr) : Button(parent) {}
    void setCaption(const QString& caption);
    [[nodiscard]] const QString& caption() const { return m_caption; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    [[nodiscard]] double textSize() const override { return TypeSize::small; }
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_caption;
};

enum class Glyph : std::uint8_t { refresh, more, less, tick };

/// A round button with a drawn sign. Its text is its tooltip, and its name to screen readers.
class GlyphButton final : public Button {
public:
    explicit GlyphButton(QWidget* parent = nullptr);
    void setGlyph(Glyph glyph);
    /// Confirms a press: for a moment a tick takes the place of its sign.
    void confirm();
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Glyph m_glyph = Glyph::refresh;
    QTimer m_confirmation;
};

} // namespace vantor::hosts::qt
