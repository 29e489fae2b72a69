// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/Theme.hpp"
#include "platform/views/UIHostingController.hpp"

#include <QAbstractButton>
#include <memory>

namespace vantor::hosts::qt {

/// One ring: paints the layers of a hosted view and is a button. It keeps the picture on screen and repaints
/// only what differs from it.
class RingView final : public QAbstractButton {
public:
    explicit RingView(QWidget* parent = nullptr);

    /// The hosted view to draw and where it lies in this widget, in points.
    void setHostedView(std::shared_ptr<platform::UIHostingView> view, const platform::CGRect& frame);
    void setTheme(const Theme& theme);

    /// Takes the picture of an instant and repaints what changed.
    void showAt(platform::Instant now);
    /// Takes the picture that all animations end in.
    void showAtRest();

    /// How fast the ring's end moves at `now`, in device pixels a second; 0 at rest, and where the whole way
    /// is less than half a pixel, which is not worth a frame.
    [[nodiscard]] double speedAt(platform::Instant now) const;

    /// The picture that all animations end in.
    [[nodiscard]] platform::Layers restingLayers() const { return layersAt(platform::Instant::max()); }
    [[nodiscard]] QString caption() const;
    [[nodiscard]] QString percentage() const;
    [[nodiscard]] const platform::Layers& layers() const { return m_layers; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] platform::Layers layersAt(platform::Instant now) const;
    [[nodiscard]] QString textLayer(std::size_t index) const;
    void replace(platform::Layers layers);
    void announceValue();
    void paintGround(QPainter& painter) const;

    std::shared_ptr<platform::UIHostingView> m_view;
    platform::CGRect m_frame;
    platform::Layers m_layers; // as on screen
    Theme m_theme;
    bool m_keyboardFocus = false;
};

} // namespace vantor::hosts::qt
