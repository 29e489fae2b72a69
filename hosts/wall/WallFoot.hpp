// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"
#include "hosts/wall/WallPainter.hpp"

#include <QWidget>
#include <vector>

namespace vantor::hosts::wall {

/// The line below a wall: which keys there are, and what rings and colours mean. What the room is short for
/// is left out, the last first.
class WallFoot final : public QWidget {
public:
    WallFoot() = default;

    void setLook(const WallLook& look);
    void tell(fleet::FleetOrder order, Density density);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Key {
        QString letters;
        QString word;
        QString current = {}; ///< in it, and to stand out
    };

    [[nodiscard]] std::vector<Key> keys() const;
    void underline(QPainter& painter, const QRect& line, int start, int width);

    WallPainter m_painter;
    fleet::FleetOrder m_order = fleet::FleetOrder::worst;
    QString m_meaning;
};

} // namespace vantor::hosts::wall
