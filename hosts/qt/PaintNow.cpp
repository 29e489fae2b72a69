// SPDX-License-Identifier: MIT
#include "hosts/qt/PaintNow.hpp"

#include "hosts/qt/WindowPlace.hpp"

#include <QBackingStore>
#include <QImage>
#include <QWidget>
#include <QWindow>
#include <algorithm>

namespace vantor::hosts::qt {

namespace {

/// Whether a widget that is drawn later, beside this one or beside a parent of it, lies over the area, or a
/// parent cuts it off, as one that scrolls does.
bool isCovered(const QWidget& widget, QRect area) {
    for (const QWidget* at = &widget; !at->isWindow(); at = at->parentWidget()) {
        area.translate(at->pos());
        if (!at->parentWidget()->rect().contains(area)) {
            return true;
        }
        const QObjectList& siblings = at->parentWidget()->children();
        const auto self = std::ranges::find(siblings, static_cast<const QObject*>(at));
        const bool covered = std::any_of(self, siblings.end(), [&](const QObject* object) {
            const auto* sibling = object->isWidgetType() ? static_cast<const QWidget*>(object) : at;
            return sibling != at && sibling->isVisible() && sibling->geometry().intersects(area);
        });
        if (covered) {
            return true;
        }
    }
    return false;
}

} // namespace

bool paintNow(QWidget& widget, const QRect& area, const FrameDrawing& draw) {
    const QWidget* top = widget.window();
    QBackingStore* const store = widget.backingStore();
    QWindow* const handle = top->windowHandle();
    if (store == nullptr || handle == nullptr || !handle->isExposed() || !widget.isVisible() ||
        isCovered(widget, area)) {
        return false;
    }
    const QRect inWindow = area.translated(widget.mapTo(top, QPoint()));
    // Asked for a region, the toolkit waits until the X server has read what was last sent of it, which costs
    // a round trip a frame. What a late server shows instead is the end of a ring one frame on. Elsewhere it
    // has several images of a window and must be told what one of them has ahead of the others.
    store->beginPaint(isX11() ? QRegion() : QRegion(inWindow));
    auto* const image = dynamic_cast<QImage*>(store->paintDevice());
    const bool drawn = image != nullptr && image->depth() == 32;
    if (drawn) {
        const double ratio = image->devicePixelRatio();
        draw(*image,
             QRectF(QPointF(inWindow.topLeft()) * ratio, QSizeF(inWindow.size()) * ratio).toAlignedRect());
    }
    store->endPaint();
    if (drawn) {
        store->flush(inWindow);
    }
    return drawn;
}

} // namespace vantor::hosts::qt
