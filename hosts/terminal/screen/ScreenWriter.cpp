// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/ScreenWriter.hpp"

#include "hosts/terminal/text/DisplayText.hpp"
#include "platform/core/Utf8.hpp"

namespace vantor::hosts::terminal {

namespace {

/// Unchanged cells between two changed ones that are cheaper to write again than to jump over.
constexpr int shortGap = 4;

/// The end of a sequence that sets a colour of 24 bits.
std::string components(std::uint32_t rgb) {
    const auto component = [&](unsigned shift) { return std::to_string(rgb >> shift & 0xFF); };
    return component(16) + ';' + component(8) + ';' + component(0) + 'm';
}

std::string wholeRow(const Grid& picture) {
    std::string line;
    for (int column = 0; column < picture.size().width; ++column) {
        if (const char32_t character = picture.at(column, 0).character; character != 0) {
            platform::appendUtf8(line, character);
        }
    }
    return inLocaleCharacters(line);
}

} // namespace

std::string ScreenWriter::update(const Grid& picture) {
    std::string bytes;
    if (!m_terminal.canAddress) {
        if (picture != m_shown) {
            bytes = '\r' + wholeRow(picture);
            m_shown = picture;
        }
        return bytes;
    }
    if (m_shown.size() != picture.size()) {
        bytes = m_terminal.plain + m_terminal.clear;
        m_ink = Ink{};
        m_shown = Grid(picture.size());
    }
    const Size size = picture.size();
    for (int row = 0; row < size.height; ++row) {
        // Where the last cell would scroll the screen, it stays blank.
        const int width = size.width - (m_terminal.wrapsAtOnce && row == size.height - 1 ? 1 : 0);
        for (int column = 0; column < width;) {
            if (picture.at(column, row) == m_shown.at(column, row)) {
                ++column;
                continue;
            }
            int end = column + 1;
            for (int ahead = end; ahead < width && ahead < end + shortGap; ++ahead) {
                end = picture.at(ahead, row) == m_shown.at(ahead, row) ? end : ahead + 1;
            }
            writeRun(bytes, picture, column, end, row);
            column = end;
        }
    }
    m_shown = picture;
    return bytes;
}

void ScreenWriter::writeRun(std::string& bytes, const Grid& picture, int column, int end, int row) {
    bytes += m_terminal.moveTo(column, row);
    std::string text;
    const auto flush = [&] {
        bytes += inLocaleCharacters(text);
        text.clear();
    };
    for (; column < end; ++column) {
        const Cell& cell = picture.at(column, row);
        if (cell.character == 0) {
            continue; // the terminal's cursor has passed it already
        }
        std::string ink;
        setInk(ink, cell.ink);
        if (!ink.empty()) {
            flush();
            bytes += ink;
        }
        platform::appendUtf8(text, cell.character);
        if (cell.mark != 0) {
            platform::appendUtf8(text, cell.mark);
        }
    }
    flush();
}

void ScreenWriter::setInk(std::string& bytes, const Ink& ink) {
    if (m_ink != ink) {
        m_ink = ink;
        bytes += m_terminal.plain + (ink.isBold ? m_terminal.bold : "") +
                 (ink.isReversed ? m_terminal.reverse : "") + colorOf(ink) + groundOf(ink);
    }
}

std::string ScreenWriter::colorOf(const Ink& ink) const {
    if (!ink.isColored) {
        return {};
    }
    if (m_depth == ColorDepth::direct) {
        return "\033[38;2;" + components(ink.rgb);
    }
    if (m_depth == ColorDepth::palette) {
        return m_terminal.foreground(nearestColor(ink.rgb, m_depth));
    }
    if (ink.isFaint) {
        return m_terminal.dim; // few colours have no usable gray
    }
    return m_depth == ColorDepth::none ? "" : m_terminal.foreground(nearestColor(ink.rgb, m_depth));
}

std::string ScreenWriter::groundOf(const Ink& ink) const {
    if (!ink.hasGround || m_depth == ColorDepth::none) {
        return {};
    }
    return m_depth == ColorDepth::direct ? "\033[48;2;" + components(ink.ground)
                                         : m_terminal.background(nearestColor(ink.ground, m_depth));
}

} // namespace vantor::hosts::terminal
