// SPDX-License-Identifier: MIT
#include "hosts/terminal/wall/WallPicture.hpp"

#include "hosts/terminal/wall/WallTiles.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <algorithm>
#include <utility>

namespace vantor::hosts::terminal {

using fleet::FleetRow;
using fleet::WallGrid;

namespace {

/// Draws what of a wall is seen between two heights of it.
class Body {
public:
    Body(const WallTiles& tiles, const Wall& wall)
        : m_tiles(tiles),
          m_wall(wall),
          m_layout(wall.layout()),
          m_rows(wall.table().rows()),
          m_bottom(wall.topLine() + m_layout.room * halves) {
        const std::optional<std::size_t> cursor = wall.cursor();
        m_chosen = cursor ? &m_rows[*cursor] : nullptr;
    }

    void draw() const {
        headings();
        const bool isPaired = m_layout.form.step.height < halves;
        const WallGrid::Range seen = m_layout.grid.between(m_wall.topLine(), m_bottom);
        for (std::size_t row = seen.first; row < seen.end; ++row) {
            if (const std::optional<WallGrid::Place> place = m_layout.grid.place(row)) {
                isPaired ? pair(row, *place) : tile(m_rows[row], *place);
            }
        }
    }

private:
    /// The row of the screen on which a height of the wall is.
    [[nodiscard]] int rowAt(int y) const { return m_layout.top + (y - m_wall.topLine()) / halves; }

    void headings() const {
        const std::vector<fleet::FleetGroup>& groups = m_wall.table().groups();
        for (std::size_t index = 0; index < groups.size(); ++index) {
            const fleet::FleetGroup& group = groups[index];
            const std::optional<int> y = m_layout.grid.headingAt(index);
            const int whole = y ? *y + *y % halves : 0;
            if (!y || whole < m_wall.topLine() || whole >= m_bottom) {
                continue;
            }
            const bool isChosen = group.isFolded && m_chosen != nullptr && &m_rows[group.first] <= m_chosen &&
                                  m_chosen < &m_rows[group.first] + group.size;
            drawHeading(m_tiles, group, rowAt(whole), isChosen);
        }
    }

    void tile(const FleetRow& row, const WallGrid::Place& place) const {
        const fleet::WallStep& step = m_layout.form.step;
        const int foot = m_layout.form.density == WallDensity::rings ? halves : 0; // a blank row
        if (place.y < m_wall.topLine() || place.y + step.height - foot > m_bottom) {
            return; // what would be seen in part is left out
        }
        const Box box{place.x, rowAt(place.y), step.width, step.height / halves};
        const bool isChosen = &row == m_chosen;
        switch (m_layout.form.density) {
        case WallDensity::rings:
            return m_tiles.rings(row, box, isChosen);
        case WallDensity::line:
            return m_tiles.line(row, box, isChosen);
        case WallDensity::cell:
            return m_tiles.cell(row, box, isChosen);
        case WallDensity::square:
            return m_tiles.sign(row, box.column, box.row, isChosen);
        }
    }

    /// Draws a cell once, by the machine in its upper half where there is one.
    void pair(std::size_t row, const WallGrid::Place& place) const {
        const bool isUpper = place.y % halves == 0;
        const std::optional<std::size_t> other =
            m_layout.grid.rowAt(place.x, isUpper ? place.y + 1 : place.y - 1);
        if (isUpper) {
            m_tiles.pair(&m_rows[row], other ? &m_rows[*other] : nullptr, place.x, rowAt(place.y), m_chosen);
        } else if (!other) {
            m_tiles.pair(nullptr, &m_rows[row], place.x, rowAt(place.y), m_chosen);
        }
    }

    const WallTiles& m_tiles;
    const Wall& m_wall;
    const WallLayout& m_layout;
    const std::vector<FleetRow>& m_rows;
    const int m_bottom;
    const FleetRow* m_chosen = nullptr;
};

/// Why there is nothing to be seen.
void drawEmptiness(const WallTiles& tiles, const Wall& wall) {
    const fleet::FleetTable& table = wall.table();
    const char* const key = table.snapshot() == nullptr ? "wall_ASKING"
                            : table.known() == 0        ? "wall_EMPTY"
                                                        : "wall_NOMATCH";
    const int row = wall.layout().top + (wall.layout().room - 1) / 2;
    tiles.sheet.text({0, row, tiles.sheet.size().width}, platform::NSLocalizedString(key), Align::center,
                     tiles.inks.quiet());
}

/// All of a screen of one line, or of a terminal that only prints: its first machines without a name would
/// say less than the header does.
void drawOneLine(const WallTiles& tiles, const Wall& wall, std::chrono::nanoseconds now) {
    if (wall.isTyping() || !wall.notice().empty()) {
        static_cast<void>(drawWallKeys(tiles, wall, 0));
    } else if (wall.table().rows().empty()) {
        drawEmptiness(tiles, wall);
    } else {
        drawHeader(tiles, wall, now);
    }
}

} // namespace

WallPicture drawWall(const Wall& wall, Size size, const WallLook& look, std::chrono::nanoseconds now) {
    WallPicture whole;
    Picture picture;
    picture.grid = Grid({std::max(size.width, 0), std::max(size.height, 0)});
    if (size.width < 1 || size.height < 1) {
        return whole;
    }
    Sheet sheet(picture, look.look);
    const WallTiles tiles(sheet, look, wall.table().order());
    const WallLayout& layout = wall.layout();
    if (size.height == 1) {
        drawOneLine(tiles, wall, now);
        whole.grid = std::move(picture.grid);
        return whole;
    }
    if (wall.table().rows().empty()) {
        drawEmptiness(tiles, wall);
    } else {
        Body(tiles, wall).draw();
    }
    if (layout.hasHeader) {
        drawHeader(tiles, wall, now);
    }
    if (layout.hasDetail) {
        drawDetail(tiles, wall, size.height - (layout.hasKeys ? 2 : 1));
    }
    if (layout.hasKeys) {
        whole.keys = drawWallKeys(tiles, wall, size.height - 1);
    }
    whole.grid = std::move(picture.grid);
    return whole;
}

} // namespace vantor::hosts::terminal
