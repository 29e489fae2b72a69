// SPDX-License-Identifier: MIT
#include "hosts/terminal/wall/WallWords.hpp"

#include "charts/ArcChartStyle.hpp"
#include "fleet/FleetWords.hpp"
#include "hosts/terminal/text/DisplayText.hpp"
#include "platform/foundation/DateText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <array>
#include <cmath>
#include <utility>

namespace vantor::hosts::terminal {

using fleet::Band;
using platform::FleetFigure;
using platform::FleetMachine;
using platform::NSLocalizedString;
using platform::textWithValue;

std::string inGlyphs(std::string text, const Look& look) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 7> plain{{{"\u00D7", "x"},
                                                                                  {"\u2013", "-"},
                                                                                  {"\u00B7", "|"},
                                                                                  {"\u2193", "v"},
                                                                                  {"\u2191", "^"},
                                                                                  {"\u25BE", "v"},
                                                                                  {"\u25B8", ">"}}};
    if (look.glyphs != Glyphs::ascii) {
        return text;
    }
    for (const auto& [sign, letter] : plain) {
        for (std::size_t at = text.find(sign); at != std::string::npos; at = text.find(sign, at)) {
            text.replace(at, sign.size(), letter);
        }
    }
    return text;
}

std::string signOf(Band band, const Look& look) {
    const std::string sign = fleet::bandSign(band);
    return sign.empty() ? " " : inGlyphs(sign, look);
}

std::string shareText(const std::optional<double>& share, const Look& look, bool hasSign) {
    if (!share) {
        return inGlyphs("\u2013", look);
    }
    std::string text = percentText(*share);
    if (!hasSign) {
        text.pop_back();
    }
    return text;
}

std::string rateText(const FleetMachine& machine, FleetFigure which, const Look& look) {
    const std::string arrow = inGlyphs(which == FleetFigure::received ? "\u2193" : "\u2191", look);
    const std::optional<double>& rate = machine.figure(which);
    return arrow + (rate && std::isfinite(*rate) ? fleet::bytesText(*rate) : inGlyphs("\u2013", look));
}

std::string downWords(const FleetMachine& machine, const Look& look) {
    return inGlyphs(fleet::downText(machine.downSince, machine.problem), look);
}

std::string downBriefly(const FleetMachine& machine) {
    return machine.downSince ? textWithValue(NSLocalizedString("wall_DOWN"), "time",
                                             platform::clockText(*machine.downSince))
                             : std::string();
}

std::vector<std::string> wrapped(std::string_view text, int width, int rows) {
    std::vector<std::string> lines;
    while (!text.empty() && static_cast<int>(lines.size()) < rows - 1) {
        std::size_t end = 0; // of the words that fit
        for (std::size_t blank = 0; blank != std::string_view::npos;) {
            blank = text.find(' ', blank + 1);
            if (displayWidth(text.substr(0, blank)) > width) {
                break;
            }
            end = std::min(blank, text.size());
        }
        if (end == 0) {
            break; // a word that is wider is cut
        }
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    if (!text.empty()) {
        lines.emplace_back(text);
    }
    return lines;
}

} // namespace vantor::hosts::terminal
