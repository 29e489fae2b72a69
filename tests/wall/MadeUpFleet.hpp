// SPDX-License-Identifier: MIT
#pragma once

#include "DemoInPlace.hpp"
#include "hosts/wall/Wall.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>

namespace vantor::tests {

/// Machines that a test makes up, and changes one by one.
class MadeUpFleet final : public platform::FleetSource {
public:
    using Clock = std::chrono::nanoseconds;
    static constexpr Clock now = std::chrono::hours(1);

    /// Green all of them; the first half are databases by their role.
    explicit MadeUpFleet(std::size_t count) {
        m_next.sources.push_back(
            {"prod", std::chrono::seconds(15), std::chrono::seconds(45), now, "", false});
        for (std::size_t i = 0; i < count; ++i) {
            char name[32];
            std::snprintf(name, sizeof name, "%s%05zu", i < count / 2 ? "db" : "web", i);
            platform::FleetMachine machine;
            machine.key = machine.name = name;
            machine.labels = i < count / 2 ? m_db : m_web;
            machine.volume = "/srv";
            machine.figures = {0.2, 0.3, 0.1, 2000.0, 1000.0};
            machine.taken = now;
            m_next.machines.push_back(machine);
        }
        publish();
    }

    [[nodiscard]] platform::FleetMachine& machine(std::size_t index) { return m_next.machines.at(index); }
    void publish() {
        m_snapshot = std::make_shared<platform::FleetSnapshot>(m_next);
        if (m_handler) {
            m_handler();
        }
    }
    [[nodiscard]] bool isAsking() const { return m_isAsking; }

    void start() override { m_isAsking = true; }
    void pause() override { m_isAsking = false; }
    [[nodiscard]] std::shared_ptr<const platform::FleetSnapshot> snapshot() const override {
        return m_snapshot;
    }
    [[nodiscard]] bool isSettled() const override { return true; }
    void setHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

private:
    using Labels = std::vector<std::pair<std::string, std::string>>;
    std::shared_ptr<const Labels> m_db = std::make_shared<Labels>(Labels{{"role", "db"}});
    std::shared_ptr<const Labels> m_web = std::make_shared<Labels>(Labels{{"role", "web"}});
    platform::FleetSnapshot m_next;
    std::shared_ptr<const platform::FleetSnapshot> m_snapshot;
    std::function<void()> m_handler;
    bool m_isAsking = false;
};

/// A wall of them, shown off screen.
class ShownWall {
public:
    explicit ShownWall(std::size_t count, const QSize& size = QSize(1200, 760)) : fleet(count) {
        putDemoInPlace();
        wall = std::make_unique<hosts::wall::Wall>(fleet, "prod", [this] { return time; });
        wall->setLook(hosts::wall::WallLook::of(platform::Appearance::light, 1, {}));
        wall->resize(size);
        wall->show();
        wall->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(wall.get()));
        wall->view().setFocus();
        QApplication::processEvents();
    }

    [[nodiscard]] hosts::wall::WallView& view() { return wall->view(); }
    void press(int key) { QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key)); }
    [[nodiscard]] std::string nameAtCursor() {
        const auto row = view().cursor();
        return row ? wall->table().rows().at(*row).machine->name : std::string();
    }
    /// How many machines are painted by what has been asked for.
    [[nodiscard]] std::size_t painted() {
        const std::size_t before = view().paintedCells();
        QApplication::processEvents();
        return view().paintedCells() - before;
    }

    MadeUpFleet fleet;
    std::chrono::nanoseconds time = MadeUpFleet::now;
    std::unique_ptr<hosts::wall::Wall> wall;
};

} // namespace vantor::tests
