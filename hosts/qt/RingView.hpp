// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/RingPicture.hpp"
#include "hosts/qt/Theme.hpp"
#include "platform/views/UIHostingController.hpp"

#include <QAbstractButton>
#include <memory>
#include <optional>

namespace vantor::hosts::qt {

/// One ring: paints the layers of a hosted view and is a button. Its placeholder is its contents rectangle;
/// the margin around that is for the tile that shows hover and focus. It keeps the picture on screen and
/// repaints only what differs from it; while its end moves, it keeps an image of all else, texts and ground,
/// so that a frame is the piece between the old and the new end.
class RingView final : public QAbstractButton {
public:
    explicit RingView(QWidget* parent = nullptr);

    /// The hosted view to draw and where it lies in this widget, in points.
    void setHostedView(std::shared_ptr<platform::UIHostingView> view, const platform::CGRect& frame);
    void setTheme(const Theme& theme);
    /// Without a figure the ring is its track, and a dash.
    void setHasFigure(bool has);

    /// Takes the picture of an instant, and sets out from there.
    void showAt(platform::Instant now);
    /// The next frame of the motion that `showAt` set out on; false once that has come to its end.
    [[nodiscard]] bool moveOn(platform::Instant now);
    /// Takes the picture that all animations end in.
    void showAtRest();

    /// How fast the ring's end moves at `now`, in device pixels a second; 0 at rest, and where the whole way
    /// is less than half a pixel, which is not worth a frame.
    [[nodiscard]] double speedAt(platform::Instant now) const;

    /// The picture that all animations end in.
    [[nodiscard]] platform::Layers restingLayers() const { return layersAt(platform::Instant::max()); }
    [[nodiscard]] QString caption() const { return textLayer(1); }
    [[nodiscard]] QString percentage() const { return textLayer(0); }
    [[nodiscard]] const platform::Layers& layers() const { return m_layers; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// The end of one stroke on its way; angles are radians.
    struct Motion {
        std::size_t stroke = 0; // its layer
        double from = 0;
        double to = 0;
        platform::Instant begin;
        platform::Instant end;
        std::optional<RingPicture> still = std::nullopt; // all but that stroke
    };

    [[nodiscard]] platform::Layers layersAt(platform::Instant now) const;
    [[nodiscard]] std::optional<Motion> motionFrom(platform::Instant now) const;
    [[nodiscard]] QString textLayer(std::size_t index) const;
    void replace(platform::Layers layers);
    [[nodiscard]] RingPicture pictureWithout(std::optional<std::size_t> stroke, const QPointF& origin,
                                             double pixelRatio) const;
    void paintFrame(QImage& window, const QRect& area, double end);
    void paintPixels(QPainter& painter, const QPointF& origin, double pixelRatio);
    [[nodiscard]] QRect pixels(const QRectF& points) const;
    void repaintAll();
    void announceValue();
    void paintGround(QPainter& painter) const;

    std::shared_ptr<platform::UIHostingView> m_view;
    platform::CGRect m_frame;
    platform::Layers m_layers; // as on screen
    std::optional<Motion> m_motion;
    Theme m_theme;
    bool m_hasFigure = true;
    bool m_keyboardFocus = false;
};

} // namespace vantor::hosts::qt
