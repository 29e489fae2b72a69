// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/wall/TextCache.hpp"
#include "hosts/wall/WallFace.hpp"

#include <QHash>
#include <QPixmap>

class QPainter;

namespace vantor::hosts::wall {

/// Paints machines. Rings, squares and tiles are drawn once each and put down as pictures; texts are laid out
/// once.
class WallPainter {
public:
    void setLook(const WallLook& look, double pixelRatio);
    [[nodiscard]] const WallLook& look() const { return m_look; }

    /// Fills all of the cell. `isCursor`: marks it as the one that keys act on.
    void paint(QPainter& painter, const QRect& cell, const Face& face, Density density, bool isCursor);
    [[nodiscard]] TextCache& texts() { return m_texts; }

    /// The square of a band with its sign, as in a header too.
    [[nodiscard]] const QPixmap& square(fleet::Band band, int side);
    /// A ring with its percentage within. Absent: the track alone, and a dash.
    struct RingKind {
        int diameter;
        std::optional<int> percent;
        fleet::Band band;
        bool hasSign = false; ///< that of the band, where the ring is open
    };
    [[nodiscard]] const QPixmap& ring(const RingKind& kind);

private:
    void paintRings(QPainter& painter, const QRect& cell, const Face& face);
    void paintCard(QPainter& painter, const QRect& cell, const Face& face);
    void paintName(QPainter& painter, const QRect& line, const Face& face, const QFont& font);
    void paintCursor(QPainter& painter, const QRect& cell, double radius);
    [[nodiscard]] QPixmap emptyPixmap(const QSize& size) const;
    [[nodiscard]] QPixmap drawnRing(const RingKind& kind) const;
    [[nodiscard]] const QPixmap& tile(const QSize& size);

    WallLook m_look;
    double m_pixelRatio = 1;
    TextCache m_texts;
    QHash<int, QPixmap> m_squares;
    QHash<int, QPixmap> m_rings;
    QPixmap m_tile;
};

/// A part of a rectangle, from its start by the user's language.
[[nodiscard]] QRect fromStart(const QRect& whole, int start, int width);

} // namespace vantor::hosts::wall
