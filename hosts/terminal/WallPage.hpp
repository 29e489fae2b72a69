// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FleetHost.hpp"
#include "hosts/common/Pause.hpp"
#include "hosts/terminal/Page.hpp"
#include "hosts/terminal/WidgetPage.hpp"
#include "hosts/terminal/screen/Capabilities.hpp"
#include "hosts/terminal/wall/Wall.hpp"
#include "platform/machine/Machine.hpp"

#include <memory>
#include <optional>

namespace vantor::hosts::terminal {

/// Many machines, and in their place the one that was opened, until Esc. The wall goes on behind it.
class WallPage final : public Page {
public:
    /// Of a fleet that is open, which must outlive this. Asks it from now on.
    WallPage(common::FleetHost& fleet, const common::FleetChoice& choice, ColorDepth depth);
    ~WallPage() override;

    void turn(platform::Instant now) override;
    void leave() override;
    void comeBack() override;
    [[nodiscard]] bool hasFigures() const override;
    [[nodiscard]] bool takeChange() override;
    [[nodiscard]] std::optional<platform::Instant> nextChange() const override;
    const Grid& draw(Size size, const Look& look, platform::Instant now) override;
    const Grid& step(const Look& look, platform::Instant now) override;
    void take(const KeyPress& press, platform::Instant now) override;
    void take(CursorKey key, platform::Instant now) override;
    void take(const Click& click, platform::Instant now) override;
    void take(const Wheel& wheel, platform::Instant now) override;
    [[nodiscard]] bool hasQuit() const override;

private:
    /// The machine that is opened, in place while this lives.
    struct Opened {
        std::unique_ptr<common::RemoteNode> node;
        /// Once it is ready. It outlives this, and so does the viewer: workers may still ask both for the
        /// page that went.
        std::optional<platform::Current<platform::Machine>> machine;
        std::unique_ptr<WidgetPage> page;
    };

    void answer(Wall::Answer answer);
    void open();
    void showOpened();
    void close();
    void closeIfAsked();
    [[nodiscard]] bool isOpened() const { return m_opened && m_opened->page != nullptr; }

    common::FleetHost& m_fleet;
    const WallColors m_colors;
    Wall m_wall;
    std::optional<Opened> m_opened;
    common::PauseWatch m_pauses;
    Size m_size;
    std::optional<platform::Instant> m_nextSecond; ///< ages are told in seconds
    bool m_hasNews = false;
    bool m_changed = true;
    bool m_hasQuit = false;
};

} // namespace vantor::hosts::terminal
