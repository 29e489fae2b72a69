// SPDX-License-Identifier: MIT
#include "fleet/FleetWords.hpp"
#include "hosts/terminal/text/DisplayText.hpp"
#include "hosts/terminal/wall/WallPicture.hpp"
#include "hosts/terminal/wall/WallTiles.hpp"
#include "hosts/terminal/wall/WallWords.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace vantor::hosts::terminal {

using fleet::Band;
using fleet::FleetOrder;
using platform::FleetFigure;
using platform::NSLocalizedString;

namespace {

/// A text of a line, which goes before others where there is no room for all.
struct Piece {
    std::string text;
    Ink ink;
    int rank = 0;          ///< the greatest goes first, of equals the last
    char32_t key = 0;      ///< that a click on it is as good as
    std::string mark = {}; ///< stands before it, in an ink of its own
    Ink markInk = {};
};

constexpr int gap = 2;

int widthOf(const Piece& piece) {
    const int mark = displayWidth(piece.mark);
    return (mark > 0 ? mark + 1 : 0) + displayWidth(piece.text);
}

int widthOf(const std::vector<Piece>& pieces) {
    int width = 0;
    for (const Piece& piece : pieces) {
        width += widthOf(piece) + (width > 0 ? gap : 0);
    }
    return width;
}

void fitInto(std::vector<Piece>& pieces, int width) {
    while (pieces.size() > 1 && widthOf(pieces) > width) {
        const auto last = std::ranges::max_element(pieces.rbegin(), pieces.rend(), {}, &Piece::rank);
        pieces.erase(last.base() - 1); // of equals the last
    }
}

/// Draws pieces side by side and returns the column after them.
int drawPieces(const WallTiles& tiles, const std::vector<Piece>& pieces, int column, int row) {
    for (const Piece& piece : pieces) {
        const int mark = displayWidth(piece.mark);
        const int room = tiles.sheet.size().width - column;
        if (mark > 0) {
            tiles.sheet.text({column, row, std::min(mark, room)}, piece.mark, Align::leading, piece.markInk);
        }
        const int before = mark > 0 ? mark + 1 : 0;
        tiles.sheet.text({column + before, row, room - before}, piece.text, Align::leading, piece.ink);
        column += widthOf(piece) + gap;
    }
    return column;
}

/// The bands that a header tells of; of yellow and green ones it is silent.
std::vector<Piece> countPieces(const WallTiles& tiles, const fleet::FleetCounts& counts) {
    std::vector<Piece> pieces;
    const std::string square = tiles.look.look.glyphs == Glyphs::ascii ? "#" : "\u25A0";
    constexpr std::array told{std::pair(Band::down, 1), std::pair(Band::red, 2), std::pair(Band::orange, 5),
                              std::pair(Band::stale, 6), std::pair(Band::unknown, 7)};
    for (const auto& [band, rank] : told) {
        if (counts.of(band) > 0) {
            const bool isColor = band == Band::red || band == Band::orange;
            pieces.push_back({fleet::bandCountText(band, counts.of(band)),
                              {},
                              rank,
                              0,
                              isColor ? square : signOf(band, tiles.look.look),
                              isColor ? tiles.inks.band(band) : strongInk()});
        }
    }
    return pieces;
}

std::string orderWord(FleetOrder order) {
    switch (order) {
    case FleetOrder::worst:
        return fleet::worstWord();
    case FleetOrder::name:
        return NSLocalizedString("wall_NAME");
    case FleetOrder::memory:
        return fleet::figureName(FleetFigure::memory);
    case FleetOrder::storage:
        return fleet::figureName(FleetFigure::storage);
    case FleetOrder::processor:
        return fleet::figureName(FleetFigure::processor);
    case FleetOrder::network:
        break;
    }
    return NSLocalizedString("host_NETWORK");
}

/// How old all is, or which source does not answer and why.
std::string tellingOf(const fleet::FleetTable& table, std::chrono::nanoseconds now) {
    if (table.snapshot() == nullptr) {
        return {};
    }
    const std::vector<std::string> problems = fleet::sourceProblems(*table.snapshot());
    return problems.empty() ? fleet::averageText(*table.snapshot(), now) : problems.front();
}

} // namespace

void drawHeader(const WallTiles& tiles, const Wall& wall, std::chrono::nanoseconds now) {
    const fleet::FleetTable& table = wall.table();
    std::vector<Piece> pieces{{wall.name(), strongInk(), 0}};
    if (!table.rows().empty()) {
        pieces.push_back({fleet::answeringText(table.counts()), tiles.inks.quiet(), 3});
        std::ranges::move(countPieces(tiles, table.counts()), std::back_inserter(pieces));
    }
    if (table.worst()) {
        pieces.push_back(
            {fleet::machineText(*table.worst()), strongInk(), 4, 0, fleet::worstWord(), tiles.inks.quiet()});
    }
    const int width = tiles.sheet.size().width - 2;
    std::string age = tellingOf(table, now);
    if (const std::size_t cut = age.rfind(" \u00B7 ");
        cut != std::string::npos && widthOf(pieces) + gap + displayWidth(age) > width) {
        age.erase(0, cut + std::string_view(" \u00B7 ").size()); // the age itself matters most
    }
    age = inGlyphs(std::move(age), tiles.look.look);
    const int ageWidth = std::min(displayWidth(age), width / 2);
    const bool hasAge = ageWidth > 0 && width >= 40;
    fitInto(pieces, width - (hasAge ? ageWidth + gap : 0));
    drawPieces(tiles, pieces, 1, 0);
    if (hasAge) {
        tiles.sheet.text({1 + width - ageWidth, 0, ageWidth}, age, Align::trailing, tiles.inks.quiet());
    }
}

void drawHeading(const WallTiles& tiles, const fleet::FleetGroup& group, int row, bool isChosen) {
    const Glyphs glyphs = tiles.look.look.glyphs;
    const char* const open = glyphs == Glyphs::ascii ? "v" : glyphs == Glyphs::block ? "\u25BC" : "\u25BE";
    const char* const folded = glyphs == Glyphs::ascii ? ">" : glyphs == Glyphs::block ? "\u25BA" : "\u25B8";
    Ink name = strongInk();
    name.isReversed = isChosen;
    const std::string none = inGlyphs("\u2013", tiles.look.look);
    const std::vector<Piece> pieces{
        {group.name.empty() ? none : group.name, name, 0, 0, group.isFolded ? folded : open,
         tiles.inks.quiet()},
        {inGlyphs(fleet::groupText(group), tiles.look.look), tiles.inks.quiet(), 1}};
    drawPieces(tiles, pieces, 0, row);
}

void drawDetail(const WallTiles& tiles, const Wall& wall, int row) {
    const std::optional<std::size_t> cursor = wall.cursor();
    if (!cursor) {
        return;
    }
    const Look& look = tiles.look.look;
    const fleet::FleetRow& chosen = wall.table().rows()[*cursor];
    const platform::FleetMachine& machine = *chosen.machine;
    std::vector<Piece> pieces{{machine.name, strongInk(), 0}};
    if (chosen.band == Band::down || chosen.band == Band::stale || chosen.band == Band::unknown) {
        pieces.back().mark = signOf(chosen.band, look);
        pieces.back().markInk = strongInk();
    }
    if (chosen.band == Band::down) {
        pieces.push_back({downWords(machine, look), {}, 0});
    }
    constexpr std::array shares{FleetFigure::memory, FleetFigure::storage, FleetFigure::processor};
    const auto isTold = [&](FleetFigure figure) { // or worth a dash
        return chosen.band != Band::down || machine.figure(figure).has_value();
    };
    for (const FleetFigure figure : shares) {
        if (!isTold(figure)) {
            continue;
        }
        std::string text = shareText(machine.figure(figure), look);
        if (figure == FleetFigure::storage && !machine.volume.empty()) {
            text += " " + machine.volume;
        }
        const Ink ink = tiles.inks.text(figureBand(chosen, figure, FleetOrder::worst));
        pieces.push_back({std::move(text), ink, 1, 0, fleet::figureName(figure), tiles.inks.quiet()});
    }
    for (const FleetFigure figure : {FleetFigure::received, FleetFigure::sent}) {
        if (!isTold(figure)) {
            continue;
        }
        pieces.push_back(
            {inGlyphs(fleet::figureName(figure) + fleet::figureText(figure, machine.figure(figure)), look),
             tiles.inks.quiet(), 3});
    }
    if (chosen.age && chosen.band != Band::down) {
        pieces.push_back({fleet::ageText(*chosen.age), tiles.inks.quiet(), 2});
    }
    fitInto(pieces, tiles.sheet.size().width - 2);
    drawPieces(tiles, pieces, 1, row);
}

std::vector<WallKeyArea> drawWallKeys(const WallTiles& tiles, const Wall& wall, int row) {
    const auto key = [&](const char* name, std::string text, char32_t means, int rank) {
        return Piece{std::move(text), tiles.inks.quiet(), rank, means, name, strongInk()};
    };
    if (!wall.notice().empty()) {
        tiles.sheet.text({1, row, tiles.sheet.size().width - 2}, inGlyphs(wall.notice(), tiles.look.look),
                         Align::leading, strongInk());
        return {};
    }
    const std::string& filter = wall.table().filterText();
    std::vector<Piece> pieces;
    if (wall.isTyping() || !filter.empty()) {
        pieces.push_back({filter, strongInk(), 0, U'/', "/", strongInk()});
        if (wall.isTyping()) {
            pieces.back().text += inGlyphs("\u258F", tiles.look.look);
        }
        pieces.push_back(key("Esc", NSLocalizedString("wall_ALL"), U'\033', 1));
    } else {
        pieces.push_back(key("/", NSLocalizedString("wall_FILTER"), U'/', 2));
    }
    if (!wall.isTyping()) {
        pieces.push_back(key("+ -", NSLocalizedString("wall_DENSITY"), U'+', 4));
        pieces.push_back(key("enter", NSLocalizedString("wall_OPEN"), U'\r', 1));
        if (wall.layout().grid.headingAt(0)) {
            pieces.push_back(key("space", NSLocalizedString("wall_FOLD"), U' ', 5));
        }
        constexpr std::array orders{
            std::tuple("w", FleetOrder::worst, 3),     std::tuple("n", FleetOrder::name, 7),
            std::tuple("r", FleetOrder::memory, 3),    std::tuple("s", FleetOrder::storage, 3),
            std::tuple("c", FleetOrder::processor, 3), std::tuple("t", FleetOrder::network, 6)};
        for (const auto& [name, order, rank] : orders) {
            const bool isNow = order == wall.table().order();
            pieces.push_back(key(name, orderWord(order), static_cast<char32_t>(name[0]), isNow ? 1 : rank));
            pieces.back().ink = isNow ? Ink{.isBold = true} : tiles.inks.quiet();
        }
        pieces.push_back(key("q", NSLocalizedString("host_QUIT"), U'q', 1));
    }
    fitInto(pieces, tiles.sheet.size().width - 2);
    drawPieces(tiles, pieces, 1, row);
    std::vector<WallKeyArea> areas;
    int column = 1;
    for (const Piece& piece : pieces) {
        const int width = widthOf(piece);
        areas.push_back({tiles.sheet.leftOf({column, row, width}), width, piece.key});
        column += width + gap;
    }
    return areas;
}

} // namespace vantor::hosts::terminal
