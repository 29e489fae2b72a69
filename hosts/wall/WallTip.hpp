// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"
#include "hosts/wall/WallLook.hpp"

#include <QString>
#include <QWidget>
#include <array>
#include <chrono>
#include <vector>

namespace vantor::hosts::wall {

/// A small card beside a machine that tells all of it: figures with the volume's mount point, how old they
/// are, labels, why it is down.
class WallTip final : public QWidget {
public:
    explicit WallTip(QWidget* parent);

    void setLook(const WallLook& look);
    void tell(const fleet::FleetTable& table, std::size_t row, std::size_t group,
              std::chrono::nanoseconds now);
    /// Beside a cell, within a room; both as the parent counts.
    void placeBy(const QRect& cell, const QRect& room);
    /// All that it says, line by line.
    [[nodiscard]] QString text() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Line {
        QString name;
        QString place; ///< beside the name: a mount point
        QString value;
        std::optional<double> share; ///< a bar's
        fleet::Band band = fleet::Band::unknown;
    };

    void fit();
    void paintLine(QPainter& painter, const QRect& line, const Line& told) const;

    WallLook m_look;
    QString m_name;
    QString m_age;
    std::vector<Line> m_lines;
    std::vector<QString> m_notes; ///< below a separator
};

} // namespace vantor::hosts::wall
