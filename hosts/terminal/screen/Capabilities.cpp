// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/Capabilities.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/posix/Environment.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace vantor::hosts::terminal {

namespace {

/// The first sixteen colours, as xterm has them but for number 3: its yellow is almost the bright yellow of
/// number 11, where most others show an ochre, which keeps orange and yellow apart.
constexpr std::array<std::uint32_t, 16> ansiColors{0x000000, 0xCD0000, 0x00CD00, 0xC4A000, 0x0000EE, 0xCD00CD,
                                                   0x00CDCD, 0xE5E5E5, 0x7F7F7F, 0xFF0000, 0x00FF00, 0xFFFF00,
                                                   0x5C5CFF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};

/// The levels of the 6×6×6 cube that follows them, from colour 16 on; then come 24 grays.
constexpr std::array<std::uint32_t, 6> cubeLevels{0, 95, 135, 175, 215, 255};
constexpr int cubeStart = 16;
constexpr int grayStart = 232;
constexpr int paletteSize = 256;

std::uint32_t paletteColor(int index) {
    if (index < cubeStart) {
        return ansiColors[static_cast<std::size_t>(index)];
    }
    if (index >= grayStart) {
        return static_cast<std::uint32_t>(8 + 10 * (index - grayStart)) * 0x010101;
    }
    const auto place = static_cast<std::size_t>(index - cubeStart);
    return cubeLevels[place / 36] << 16 | cubeLevels[place / 6 % 6] << 8 | cubeLevels[place % 6];
}

int distanceOf(std::uint32_t a, std::uint32_t b) {
    const auto component = [](std::uint32_t color, unsigned shift) {
        return static_cast<int>(color >> shift & 0xFF);
    };
    int sum = 0;
    for (const unsigned shift : {16U, 8U, 0U}) {
        const int difference = component(a, shift) - component(b, shift);
        sum += difference * difference;
    }
    return sum;
}

} // namespace

TerminalEnvironment TerminalEnvironment::fromProcess() {
    return {platform::posix::environmentText("TERM"), platform::posix::environmentText("COLORTERM"),
            platform::posix::environmentText("COLORFGBG"),
            !platform::posix::environmentText("NO_COLOR").empty(),
            !platform::posix::environmentText("TMUX").empty()};
}

ColorDepth colorDepthFor(ColorChoice choice, const TerminalEnvironment& environment,
                         const Terminfo& terminal) {
    switch (choice) {
    case ColorChoice::none:
        return ColorDepth::none;
    case ColorChoice::eight:
        return ColorDepth::eight;
    case ColorChoice::sixteen:
        return ColorDepth::sixteen;
    case ColorChoice::palette:
        return ColorDepth::palette;
    case ColorChoice::direct:
        return ColorDepth::direct;
    case ColorChoice::automatic:
        if (environment.noColor || environment.term.empty() || environment.term == "dumb") {
            return ColorDepth::none;
        }
        break;
    case ColorChoice::always:
        break;
    }
    if (environment.colorTerm == "truecolor" || environment.colorTerm == "24bit" || terminal.hasDirectColor ||
        terminal.colors > paletteSize) {
        return ColorDepth::direct;
    }
    const ColorDepth least = choice == ColorChoice::always ? ColorDepth::eight : ColorDepth::none;
    return terminal.colors >= paletteSize ? ColorDepth::palette
           : terminal.colors >= 16        ? ColorDepth::sixteen
           : terminal.colors >= 8         ? ColorDepth::eight
                                          : least;
}

Glyphs glyphsFor(const TerminalEnvironment& environment, bool isUtf8) {
    if (!isUtf8) {
        return Glyphs::ascii;
    }
    if (environment.term.starts_with("linux")) {
        return Glyphs::block;
    }
    constexpr std::array<std::string_view, 4> drawsBlocks{"xterm-kitty", "foot", "xterm-ghostty", "wezterm"};
    const bool draws = std::ranges::any_of(
        drawsBlocks, [&](std::string_view name) { return environment.term.starts_with(name); });
    return draws ? Glyphs::sextant : Glyphs::solid;
}

std::optional<platform::Appearance> appearanceFrom(std::string_view colorFgBg) {
    const std::size_t separator = colorFgBg.rfind(';');
    if (separator == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view number = colorFgBg.substr(separator + 1);
    int background = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), background);
    if (error != std::errc() || end != number.data() + number.size() || background < 0 || background > 15) {
        return std::nullopt; // "default" among others
    }
    constexpr int white = 7;
    constexpr int darkGray = 8;
    return background < white || background == darkGray ? platform::Appearance::dark
                                                        : platform::Appearance::light;
}

bool answersQueries(const TerminalEnvironment& environment, const Terminfo& terminal) {
    return terminal.hasMouse && !environment.term.starts_with("linux");
}

namespace {
/// What xterm does with a title, screen(1) does not: it has no stack of them.
bool keepsTitles(const TerminalEnvironment& environment, const Terminfo& terminal) {
    return answersQueries(environment, terminal) &&
           (environment.isTmux || !environment.term.starts_with("screen"));
}
} // namespace

std::string titleOn(const TerminalEnvironment& environment, const Terminfo& terminal, std::string_view name) {
    if (!keepsTitles(environment, terminal)) {
        return {};
    }
    return "\033[22;2t\033]2;" + platform::printableText(name) + " \u2013 Vantor\033\\";
}

std::string titleOff(const TerminalEnvironment& environment, const Terminfo& terminal) {
    return keepsTitles(environment, terminal) ? "\033[23;2t" : "";
}

int nearestColor(std::uint32_t rgb, ColorDepth depth) {
    const int count = depth == ColorDepth::palette ? paletteSize : depth == ColorDepth::sixteen ? 16 : 8;
    int nearest = 0;
    int least = std::numeric_limits<int>::max();
    // In the large palette the first sixteen are left out: users give them colours of their own.
    for (int index = count == paletteSize ? cubeStart : 0; index < count; ++index) {
        if (const int distance = distanceOf(rgb, paletteColor(index)); distance < least) {
            least = distance;
            nearest = index;
        }
    }
    return nearest;
}

} // namespace vantor::hosts::terminal
