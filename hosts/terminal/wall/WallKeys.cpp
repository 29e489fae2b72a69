// SPDX-License-Identifier: MIT
#include "hosts/terminal/wall/Wall.hpp"
#include "platform/core/Utf8.hpp"

#include <algorithm>
#include <utility>
#include <vector>

namespace vantor::hosts::terminal {

using fleet::FleetOrder;
using fleet::WallMove;

namespace {

constexpr char32_t enter = U'\r';
constexpr char32_t escape = U'\033';
constexpr char32_t erase = U'\177';
constexpr char32_t backspace = U'\b';
constexpr std::size_t longestFilter = 200; // bytes

std::optional<FleetOrder> orderOf(char32_t key) {
    switch (key) {
    case U'w':
        return FleetOrder::worst;
    case U'n':
        return FleetOrder::name;
    case U'r':
        return FleetOrder::memory;
    case U's':
        return FleetOrder::storage;
    case U'c':
    case U'p':
        return FleetOrder::processor;
    case U't':
        return FleetOrder::network;
    default:
        return std::nullopt;
    }
}

char32_t smallLetter(char32_t key) {
    return key >= U'A' && key <= U'Z' ? key + (U'a' - U'A') : key;
}

} // namespace

Wall::Answer Wall::press(char32_t key, std::chrono::nanoseconds now) {
    m_notice.clear();
    if (m_isTyping) {
        return type(key, now);
    }
    const char32_t letter = smallLetter(key);
    const std::optional<std::size_t> row = cursor();
    if (const std::optional<FleetOrder> order = orderOf(letter)) {
        m_table.orderBy(*order, now);
        showCursor();
        return Answer::changed;
    }
    switch (letter) {
    case U'q':
        return Answer::quit;
    case U'/':
        m_isTyping = true;
        return Answer::changed;
    case U'+':
    case U'=': // the key of "+" without Shift
        return step(-1);
    case U'-':
        return step(1);
    case U' ':
        return row ? fold(*row) : Answer::nothing;
    case enter:
    case U'\n':
        if (row && !m_layout.grid.place(*row)) {
            return fold(*row);
        }
        return row ? Answer::open : Answer::nothing;
    case escape:
        if (m_table.filterText().empty()) {
            return Answer::nothing;
        }
        m_table.filter({}, now);
        showCursor();
        return Answer::changed;
    default:
        return Answer::nothing;
    }
}

/// What is typed filters at once.
Wall::Answer Wall::type(char32_t key, std::chrono::nanoseconds now) {
    std::string text = m_table.filterText();
    if (key == enter || key == U'\n' || key == escape) {
        m_isTyping = false;
        if (key == escape) {
            text.clear();
        }
    } else if (key == erase || key == backspace) {
        while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0U) == 0x80U) {
            text.pop_back();
        }
        if (!text.empty()) {
            text.pop_back();
        }
    } else if (key >= U' ' && text.size() < longestFilter) {
        platform::appendUtf8(text, key);
    }
    if (text != m_table.filterText()) {
        m_table.filter(std::move(text), now);
        showCursor();
    }
    return Answer::changed;
}

Wall::Answer Wall::move(WallMove move) {
    m_notice.clear();
    layOut();
    const std::optional<std::size_t> row = cursor();
    if (!row) {
        return Answer::nothing;
    }
    m_isTyping = false;
    if (m_look.look.isRightToLeft && (move == WallMove::left || move == WallMove::right)) {
        move = move == WallMove::left ? WallMove::right : WallMove::left;
    }
    goTo(m_layout.grid.moved(*row, move, m_layout.room * halves));
    return Answer::changed;
}

Wall::Answer Wall::fold(std::size_t row) {
    const std::optional<std::size_t> group = groupOf(row);
    if (!group || !m_layout.grid.headingAt(*group)) {
        return Answer::nothing; // there are no groups
    }
    const fleet::FleetGroup& chosen = m_table.groups()[*group];
    m_table.fold(std::string(chosen.name), !chosen.isFolded);
    goTo(row);
    return Answer::changed;
}

/// To the next density, from the one that is shown.
Wall::Answer Wall::step(int by) {
    const std::vector<WallForm> forms = wallForms(m_size.width, m_look);
    const auto shown = std::ranges::find(forms, m_layout.form.density, &WallForm::density);
    const auto index = static_cast<int>(shown - forms.begin()) + by;
    if (index < 0 || index >= static_cast<int>(forms.size())) {
        return Answer::nothing;
    }
    m_density = forms[static_cast<std::size_t>(index)].density;
    showCursor();
    return Answer::changed;
}

Wall::Answer Wall::click(int column, int row, std::chrono::nanoseconds now) {
    for (const WallKeyArea& area : m_picture.keys) {
        if (m_layout.hasKeys && row == m_size.height - 1 && column >= area.column &&
            column < area.column + area.width) {
            return press(area.key, now);
        }
    }
    layOut();
    if (row < m_layout.top || row >= m_layout.top + m_layout.room) {
        return Answer::nothing;
    }
    const int x = m_look.look.isRightToLeft ? m_size.width - 1 - column : column;
    const int y = (row - m_layout.top) * halves + m_topLine;
    std::optional<std::size_t> found = m_layout.grid.rowAt(x, y);
    for (int half = 0; half < halves; ++half) {
        const std::optional<std::size_t> group = m_layout.grid.groupAt(y + half);
        if (group && !found) {
            return fold(m_table.groups()[*group].first);
        }
        found = found ? found : m_layout.grid.rowAt(x, y + half);
    }
    if (!found) {
        return Answer::nothing;
    }
    const std::optional<std::size_t> before = cursor();
    goTo(*found);
    return before == found && m_machine ? Answer::open : Answer::changed;
}

Wall::Answer Wall::turnWheel(bool isUp) {
    constexpr int rows = 3;
    const int before = m_topLine;
    layOut();
    scrollTo(m_topLine + (isUp ? -rows : rows) * halves);
    return m_topLine != before ? Answer::changed : Answer::nothing;
}

} // namespace vantor::hosts::terminal
