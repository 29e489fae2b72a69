// SPDX-License-Identifier: MIT
#include "hosts/terminal/WallPage.hpp"

#include "hosts/terminal/wall/WallWords.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace vantor::hosts::terminal {

using fleet::WallMove;
using platform::Instant;

namespace {

constexpr std::chrono::seconds second{1};

WallColors colorsOf(ColorDepth depth) {
    return depth == ColorDepth::none                                    ? WallColors::none
           : depth == ColorDepth::eight || depth == ColorDepth::sixteen ? WallColors::few
           : depth == ColorDepth::palette                               ? WallColors::palette
                                                                        : WallColors::many;
}

WallMove moveOf(CursorKey key) {
    constexpr std::array moves{WallMove::left,   WallMove::right,    WallMove::up,    WallMove::down,
                               WallMove::pageUp, WallMove::pageDown, WallMove::first, WallMove::last};
    return moves.at(static_cast<std::size_t>(key));
}

} // namespace

WallPage::WallPage(common::FleetHost& fleet, const common::FleetChoice& choice, ColorDepth depth)
    : m_fleet(fleet), m_colors(colorsOf(depth)), m_wall(fleet.name()) {
    const auto now = platform::RunLoop::main().now().time_since_epoch();
    m_wall.table().orderBy(fleet::orderNamed(choice.sort).value_or(fleet::FleetOrder::worst), now);
    m_wall.table().groupBy(choice.groupBy, now);
    m_fleet.source().setHandler([this] { m_hasNews = true; });
    m_fleet.source().start();
}

WallPage::~WallPage() {
    close();
    m_fleet.source().setHandler({});
    m_fleet.source().pause();
}

/// A wall behind an opened machine takes what it hears when it is seen again.
void WallPage::turn(Instant now) {
    if (m_pauses.isOver(now)) {
        m_fleet.source().start();
        m_changed = true;
    }
    if (isOpened()) {
        m_opened->page->turn(now);
        return;
    }
    platform::RunLoop::main().turn(now);
    showOpened();
    const auto time = now.time_since_epoch();
    if (std::exchange(m_hasNews, false)) {
        m_wall.table().take(m_fleet.source().snapshot(), time);
        m_changed = true;
    }
    if (m_nextSecond && now >= *m_nextSecond) {
        m_wall.table().passTime(time);
    }
}

void WallPage::leave() {
    m_fleet.source().pause();
}

void WallPage::comeBack() {
    m_pauses.begin();
    if (isOpened()) {
        m_opened->page->comeBack();
    }
}

bool WallPage::hasFigures() const {
    return m_wall.table().snapshot() != nullptr;
}

bool WallPage::takeChange() {
    const bool isOther = isOpened() && m_opened->page->takeChange();
    return std::exchange(m_changed, false) || isOther;
}

std::optional<Instant> WallPage::nextChange() const {
    return isOpened() ? m_opened->page->nextChange() : m_nextSecond;
}

const Grid& WallPage::draw(Size size, const Look& look, Instant now) {
    m_size = size;
    if (isOpened()) {
        return m_opened->page->draw(size, look, now);
    }
    m_nextSecond = now + second;
    return m_wall.draw(size, {look, m_colors}, now.time_since_epoch());
}

const Grid& WallPage::step(const Look& look, Instant now) {
    return isOpened() ? m_opened->page->step(look, now) : draw(m_size, look, now);
}

void WallPage::take(const KeyPress& press, Instant now) {
    constexpr char32_t escape = U'\033';
    if (isOpened()) {
        m_opened->page->take(press, now);
        closeIfAsked();
    } else if (m_opened && press.key == escape) {
        close(); // it was still awaited
    } else {
        answer(m_wall.press(press.key, now.time_since_epoch()));
    }
}

void WallPage::take(CursorKey key, Instant /*now*/) {
    if (!isOpened()) {
        answer(m_wall.move(moveOf(key)));
    }
}

void WallPage::take(const Click& click, Instant now) {
    if (isOpened()) {
        m_opened->page->take(click, now);
        closeIfAsked();
    } else {
        answer(m_wall.click(click.column, click.row, now.time_since_epoch()));
    }
}

void WallPage::take(const Wheel& wheel, Instant /*now*/) {
    if (!isOpened()) {
        answer(m_wall.turnWheel(wheel.isUp));
    }
}

bool WallPage::hasQuit() const {
    return m_hasQuit || (isOpened() && m_opened->page->hasQuit());
}

void WallPage::answer(Wall::Answer answer) {
    m_changed = m_changed || answer != Wall::Answer::nothing;
    m_hasQuit = m_hasQuit || answer == Wall::Answer::quit;
    if (answer == Wall::Answer::open) {
        open();
    }
}

/// What is known of it already is shown in the next turn, a machine that has still to be asked when it has
/// answered.
void WallPage::open() {
    close();
    const platform::FleetMachine* const machine = m_wall.chosen();
    std::unique_ptr<common::RemoteNode> node = machine != nullptr ? m_fleet.openMachine(*machine) : nullptr;
    if (node == nullptr) {
        m_wall.tell(platform::NSLocalizedString("wall_GONE"));
        return;
    }
    m_wall.tell(machine->name + (machine->downSince ? "   " + downWords(*machine, {}) : " \u2026"));
    m_opened.emplace();
    m_opened->node = std::move(node);
    m_opened->node->start();
}

void WallPage::showOpened() {
    if (m_opened && m_opened->page == nullptr && m_opened->node->isReady()) {
        m_opened->machine.emplace(m_opened->node->machine());
        m_opened->page =
            std::make_unique<WidgetPage>(m_opened->node->name(), std::nullopt, true, m_opened->node.get());
        m_opened->page->host().offerWayBack();
        m_changed = true;
    }
}

void WallPage::closeIfAsked() {
    if (isOpened() && m_opened->page->host().goesBack()) {
        close();
    }
}

void WallPage::close() {
    m_wall.tell({});
    if (m_opened) {
        m_opened->page.reset();
        m_opened->machine.reset();
        m_opened.reset();
        m_hasNews = true;
        m_changed = true;
    }
}

} // namespace vantor::hosts::terminal
