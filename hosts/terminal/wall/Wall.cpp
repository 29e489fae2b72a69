// SPDX-License-Identifier: MIT
#include "hosts/terminal/wall/Wall.hpp"

#include "hosts/terminal/wall/WallPicture.hpp"

#include <algorithm>
#include <vector>

namespace vantor::hosts::terminal {

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
    layout.hasHeader = m_size.height >= 2;
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
