// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"
#include "hosts/wall/WallFoot.hpp"
#include "hosts/wall/WallHead.hpp"
#include "hosts/wall/WallView.hpp"

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <functional>
#include <string>

namespace vantor::hosts::wall {

/// A wall of machines with the lines above and below it and the line to filter by: what a window shows.
class Wall final : public QWidget {
public:
    using Clock = std::function<std::chrono::nanoseconds()>;

    /// The steady clock.
    [[nodiscard]] static std::chrono::nanoseconds steadyNow();

    /// Nothing is asked of the source, which must outlive this, until somebody can see the wall.
    Wall(platform::FleetSource& source, const std::string& name, Clock clock = steadyNow);
    ~Wall() override;

    void setLook(const WallLook& look);
    /// Whether somebody can: nobody is asked for figures that nobody sees.
    void setSeen(bool isSeen);
    /// By a label; empty: no groups.
    void groupBy(const std::string& label);
    [[nodiscard]] WallView& view() { return m_view; }
    [[nodiscard]] const WallHead& head() const { return m_head; }
    [[nodiscard]] QLineEdit& filter() { return m_filter; }
    [[nodiscard]] const fleet::FleetTable& table() const { return m_table; }
    /// The height that shows all machines.
    [[nodiscard]] int wholeHeight() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void take();
    void passTime();
    void tell();
    void openFilter();
    void closeFilter();

    platform::FleetSource& m_source;
    const Clock m_clock;
    fleet::FleetTable m_table;
    WallHead m_head;
    WallView m_view;
    WallFoot m_foot;
    QWidget m_filterLine;
    QLabel m_filterName;
    QLineEdit m_filter;
    QTimer m_time;
};

/// As the words of a command line have it: "worst", "name", "ram", "storage", "cpu", "network" or nothing,
/// and a label or nothing.
void arrange(Wall& wall, const std::string& sort, const std::string& groupBy);

} // namespace vantor::hosts::wall
