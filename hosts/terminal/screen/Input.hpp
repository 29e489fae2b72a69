// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vantor::hosts::terminal {

/// What a terminal sends.
struct KeyPress {
    char32_t key = 0; ///< a printable character, or a control character such as Ctrl-L
    bool operator==(const KeyPress&) const = default;
};
/// A key that moves a cursor, whatever is held down with it.
enum class CursorKey : std::uint8_t { left, right, up, down, pageUp, pageDown, home, end };
/// The mouse wheel is turned by one notch.
struct Wheel {
    bool isUp = false;
    bool operator==(const Wheel&) const = default;
};
struct Click {
    int column = 0; ///< from 0
    int row = 0;
    bool operator==(const Click&) const = default;
};
/// The answer to the question for the background.
struct Background {
    std::uint32_t rgb = 0; ///< 0xRRGGBB
    bool operator==(const Background&) const = default;
};
/// The answer to the question for the terminal's kind (DA1), which every terminal gives after all others.
struct AnswersEnded {
    bool operator==(const AnswersEnded&) const = default;
};
using Input = std::variant<KeyPress, CursorKey, Click, Wheel, Background, AnswersEnded>;

/// Takes the terminal's bytes apart. Sequences may arrive in pieces; unknown ones are passed over whole.
class InputParser {
public:
    [[nodiscard]] std::vector<Input> parse(std::string_view bytes);

    /// Whether the last byte was an escape: the key of that name, unless what it begins is still to come.
    [[nodiscard]] bool holdsEscape() const { return m_state == State::escape; }
    /// Nothing came after it: it was the key.
    [[nodiscard]] KeyPress endEscape();

private:
    enum class State : std::uint8_t { ground, escape, control, single, string, stringEscape };
    void take(char byte, std::vector<Input>& inputs);
    void takeCharacter(char byte, std::vector<Input>& inputs);
    void endControl(char final, std::vector<Input>& inputs) const;
    void endString(std::vector<Input>& inputs) const;

    State m_state = State::ground;
    std::string m_sequence;
    std::string m_character; ///< the first bytes of one that has several
};

/// The background in an answer such as "11;rgb:ffff/ffff/dddd"; absent in any other.
[[nodiscard]] std::optional<Background> backgroundIn(std::string_view answer);

/// Light when it is brighter than half.
[[nodiscard]] platform::Appearance appearanceOf(const Background& background);

} // namespace vantor::hosts::terminal
