// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/Page.hpp"
#include "hosts/terminal/TerminalHost.hpp"

#include <optional>
#include <string>

namespace vantor::hosts::terminal {

/// One machine: its rings and figures, which move by themselves.
class WidgetPage final : public Page {
public:
    /// For the machine in place; `node` where that is not this one. `canMove` is false for a terminal that
    /// only prints, where nothing moves.
    WidgetPage(const std::string& name, std::optional<double> interval, bool isExpanded,
               common::RemoteNode* node, bool canMove = true);

    void turn(platform::Instant now) override { m_host.turn(now); }
    void comeBack() override { m_host.pause(); }
    [[nodiscard]] bool hasFigures() const override { return m_host.hasFigures(); }
    [[nodiscard]] bool takeChange() override { return m_host.takeChange(); }
    [[nodiscard]] std::optional<platform::Instant> nextChange() const override;
    const Grid& draw(Size size, const Look& look, platform::Instant now) override;
    const Grid& step(const Look& look, platform::Instant now) override;
    void take(const KeyPress& press, platform::Instant now) override;
    void take(const Click& click, platform::Instant now) override;
    [[nodiscard]] bool hasQuit() const override { return m_host.hasQuit(); }

    [[nodiscard]] TerminalHost& host() { return m_host; }

private:
    void note(platform::Instant now);

    TerminalHost m_host;
    const bool m_canMove;
    Picture m_picture;
    Size m_size;
    platform::Instant m_drawn;
    std::optional<platform::Instant> m_nextStep;
    std::optional<platform::Instant> m_noticeEnd;
};

} // namespace vantor::hosts::terminal
