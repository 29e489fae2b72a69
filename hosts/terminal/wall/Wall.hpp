// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"
#include "hosts/terminal/picture/Grid.hpp"
#include "hosts/terminal/wall/WallDensity.hpp"

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor::hosts::terminal {

/// Words in the last line that answer to a click as a key does.
struct WallKeyArea {
    int column = 0;
    int width = 0;
    char32_t key = 0;
};

/// One picture of a wall.
struct WallPicture {
    Grid grid;
    std::vector<WallKeyArea> keys;
};

/// Where everything of a wall stands on the screen.
struct WallLayout {
    WallForm form;
    fleet::WallGrid grid;
    int top = 0;  ///< the wall's first row on the screen
    int room = 0; ///< rows for it
    bool hasHeader = false;
    bool hasDetail = false;
    bool hasKeys = false;
};

/// A wall of machines on a screen: the table, where the cursor and the view are, and what keys do to them.
/// It draws when asked and knows neither terminal nor source. `now` is on the steady clock. Main thread.
class Wall {
public:
    /// What a key or a click came to, for whoever shows the wall.
    enum class Answer : std::uint8_t { nothing, changed, open, quit };

    /// Under the name of what the machines come from.
    explicit Wall(std::string name) : m_name(std::move(name)) {}

    [[nodiscard]] fleet::FleetTable& table() { return m_table; }
    [[nodiscard]] const fleet::FleetTable& table() const { return m_table; }
    [[nodiscard]] const std::string& name() const { return m_name; }

    Answer press(char32_t key, std::chrono::nanoseconds now);
    Answer move(fleet::WallMove move);
    /// On a machine chooses it, on the chosen one opens it; on a group's line folds it.
    Answer click(int column, int row, std::chrono::nanoseconds now);
    Answer turnWheel(bool isUp);

    /// The machine to open; null where there is none.
    [[nodiscard]] const platform::FleetMachine* chosen() const;
    /// The row that the cursor is on: the machine that was gone to, wherever it is now, and before that the
    /// first. Absent without rows.
    [[nodiscard]] std::optional<std::size_t> cursor() const;

    /// Something to tell in place of the keys, until the next of them; empty: nothing.
    void tell(std::string notice) { m_notice = std::move(notice); }
    [[nodiscard]] const std::string& notice() const { return m_notice; }

    [[nodiscard]] bool isTyping() const { return m_isTyping; } ///< a filter
    [[nodiscard]] int topLine() const { return m_topLine; }    ///< the first half row that is seen
    [[nodiscard]] const WallLayout& layout() const { return m_layout; }

    /// Depends on nothing but what it was told and the locale's table of character widths.
    [[nodiscard]] const Grid& draw(Size size, const WallLook& look, std::chrono::nanoseconds now);

private:
    void layOut();
    void goTo(std::size_t row);
    void showCursor();
    void scrollTo(int line);
    Answer type(char32_t key, std::chrono::nanoseconds now);
    Answer fold(std::size_t row);
    Answer step(int by);
    [[nodiscard]] std::optional<std::size_t> groupOf(std::size_t row) const;

    const std::string m_name;
    fleet::FleetTable m_table;
    std::optional<std::pair<std::size_t, std::string>> m_machine; ///< source and key
    std::size_t m_lastRow = 0;                                    ///< where it was seen last
    std::optional<WallDensity> m_density;                         ///< the user's; absent: by the room
    std::string m_notice;
    bool m_isTyping = false;
    int m_topLine = 0;
    Size m_size{80, 24};
    WallLook m_look;
    WallLayout m_layout;
    WallPicture m_picture;
};

} // namespace vantor::hosts::terminal
