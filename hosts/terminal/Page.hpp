// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Look.hpp"
#include "hosts/terminal/screen/Input.hpp"
#include "platform/time/RunLoop.hpp"

#include <optional>
#include <string>

namespace vantor::hosts::terminal {

/// What a session shows on the whole screen, and what keys do there. Knows nothing of the terminal. Main
/// thread.
class Page {
public:
    Page() = default;
    virtual ~Page() = default;
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    /// Turns the main loop, after a pause with everything taken up again.
    virtual void turn(platform::Instant now) = 0;
    /// It leaves the screen, as when the program is stopped: nothing needs to be asked.
    virtual void leave() {}
    /// It is back: the next turn comes after a pause.
    virtual void comeBack() = 0;

    /// Whether a first picture is worth drawing.
    [[nodiscard]] virtual bool hasFigures() const = 0;
    /// True once after each change of what is to be drawn.
    [[nodiscard]] virtual bool takeChange() = 0;
    /// When something changes by itself, as a ring that moves does; absent while nothing does.
    [[nodiscard]] virtual std::optional<platform::Instant> nextChange() const = 0;
    /// The picture at an instant, as it was last drawn where nothing has changed since.
    virtual const Grid& draw(Size size, const Look& look, platform::Instant now) = 0;
    /// Goes on from the picture before with what has moved by itself.
    virtual const Grid& step(const Look& look, platform::Instant now) = 0;

    virtual void take(const KeyPress& press, platform::Instant now) = 0;
    virtual void take(CursorKey /*key*/, platform::Instant /*now*/) {}
    virtual void take(const Click& click, platform::Instant now) = 0;
    virtual void take(const Wheel& /*wheel*/, platform::Instant /*now*/) {}
    [[nodiscard]] virtual bool hasQuit() const = 0;
};

} // namespace vantor::hosts::terminal
