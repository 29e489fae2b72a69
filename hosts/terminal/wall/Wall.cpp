// SPDX-License-Identifier: MIT
#include "hosts/terminal/wall/Wall.hpp"

#include "hosts/terminal/wall/WallPicture.hpp"
#include "platform/core/Utf8.hpp"

#include <algorithm>
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

std::optional<std::size_t> Wall::cursor() const {
    const std::size_t count = m_table.rows().size();
    if (count == 0) {
        return std::nullopt;
    }
    if (!m_machine) {
        return 0;
    }
    const std::optional<std::size_t> row = m_table.rowOf(m_machine->first, m_machine->second);
    return row ? *row : std::min(m_lastRow, count - 1);
}

const platform::FleetMachine* Wall::chosen() const {
    const std::optional<std::size_t> row = cursor();
    return row ? m_table.rows()[*row].machine : nullptr;
}

std::optional<std::size_t> Wall::groupOf(std::size_t row) const {
    const std::vector<fleet::FleetGroup>& groups = m_table.groups();
    const auto found = std::ranges::find_if(groups, [row](const fleet::FleetGroup& group) {
        return row >= group.first && row < group.first + group.size;
    });
    return found != groups.end() ? std::optional(static_cast<std::size_t>(found - groups.begin()))
                                 : std::nullopt;
}

void Wall::goTo(std::size_t row) {
    const platform::FleetMachine& machine = *m_table.rows()[row].machine;
    m_machine.emplace(machine.source, machine.key);
    m_lastRow = row;
    showCursor();
}

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

void Wall::scrollTo(int line) {
    const int most = m_layout.grid.height() - m_layout.room * halves;
    m_topLine = std::clamp(line + line % halves, 0, std::max(0, most + most % halves));
}

/// The view moves as little as it takes, and to the top of a group together with its heading.
void Wall::showCursor() {
    layOut();
    const std::optional<std::size_t> row = cursor();
    const std::optional<std::size_t> group = row ? groupOf(*row) : std::nullopt;
    if (!group) {
        return;
    }
    const std::optional<int> heading = m_layout.grid.headingAt(*group);
    const std::optional<fleet::WallGrid::Place> place = m_layout.grid.place(*row);
    const int height = place ? m_layout.form.step.height : m_layout.form.step.heading;
    int top = place ? place->y : heading.value_or(0);
    const int bottom = top + height;
    if (heading && place &&
        *row < m_table.groups()[*group].first + static_cast<std::size_t>(m_layout.grid.columns())) {
        top = *heading;
    }
    if (bottom > m_topLine + m_layout.room * halves) {
        scrollTo(bottom - m_layout.room * halves + 1);
    }
    if (top < m_topLine) {
        scrollTo(top - top % halves);
    }
}

void Wall::layOut() {
    WallLayout layout;
    layout.hasHeader = m_size.height >= 4;
    layout.hasKeys = m_size.height >= 6;
    layout.hasDetail = m_size.height >= 5;
    layout.top = layout.hasHeader ? 1 : 0;
    layout.room =
        std::max(1, m_size.height - layout.top - (layout.hasKeys ? 1 : 0) - (layout.hasDetail ? 1 : 0));
    const std::vector<WallForm> forms = wallForms(m_size.width, m_look);
    std::vector<fleet::WallStep> steps;
    std::ranges::transform(forms, std::back_inserter(steps), &WallForm::step);
    const std::vector<fleet::FleetGroup>& groups = m_table.groups();
    auto form = std::ranges::find_if(forms, [this](const WallForm& known) {
        return m_density && known.density >= *m_density; // where that one has no room, the next that has
    });
    if (form == forms.end()) {
        const std::size_t fitting =
            fleet::WallGrid::richest(groups, steps, m_size.width, layout.room * halves);
        form = forms.begin() + static_cast<std::ptrdiff_t>(fitting);
    }
    layout.form = *form;
    layout.grid = fleet::WallGrid(groups, form->step, m_size.width);
    if (layout.grid.height() <= (layout.room - 1) * halves && layout.hasHeader) {
        ++layout.top; // air below the header
        --layout.room;
    }
    m_layout = std::move(layout);
    scrollTo(m_topLine);
}

const Grid& Wall::draw(Size size, const WallLook& look, std::chrono::nanoseconds now) {
    const bool isOther = m_size != size || m_look != look;
    m_size = size;
    m_look = look;
    layOut();
    if (isOther) {
        showCursor();
    }
    if (const std::optional<std::size_t> row = cursor()) {
        m_lastRow = *row;
    }
    m_picture = drawWall(*this, size, look, now);
    return m_picture.grid;
}

} // namespace vantor::hosts::terminal
