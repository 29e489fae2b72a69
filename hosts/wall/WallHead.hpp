// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"
#include "hosts/wall/WallPainter.hpp"

#include <QWidget>
#include <chrono>
#include <vector>

namespace vantor::hosts::wall {

/// The line above a wall: what it is called, how many answer, how many are in each band that matters, the
/// worst, and how old the figures are. Where the room is short, the least of these goes first.
class WallHead final : public QWidget {
public:
    explicit WallHead(QString name);

    void setLook(const WallLook& look);
    void tell(const fleet::FleetTable& table, std::chrono::nanoseconds now);
    /// All that it says.
    [[nodiscard]] QString text() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Piece {
        QString text;
        double points = 15;
        bool isBold = false;
        bool isSecondary = false;
        std::optional<fleet::Band> sign; ///< before it
        int gap = 0;                     ///< before it, in points
        int rank = 0;                    ///< what goes first where the room is short: the greatest

        bool operator==(const Piece&) const = default;
    };

    [[nodiscard]] int width(const Piece& piece) const;
    [[nodiscard]] std::vector<Piece> fitting(int room) const;
    void paintPiece(QPainter& painter, const Piece& piece, int start, int room);

    const QString m_name;
    WallPainter m_painter;
    std::vector<Piece> m_pieces;
    QString m_moment;
    bool m_hasProblem = false;
};

} // namespace vantor::hosts::wall
