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
    char key = 0; ///< a printable ASCII character, or a control character such as Ctrl-L
    bool operator==(const KeyPress&) const = default;
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
using Input = std::variant<KeyPress, Click, Background, AnswersEnded>;

/// Takes the terminal's bytes apart. Sequences may arrive in pieces; unknown ones are passed over whole.
class InputParser {
public:
    [[nodiscard]] std::vector<Input> parse(std::string_view bytes);

private:
    enum class State : std::uint8_t { ground, escape, control, single, string, stringEscape };
    void take(char byte, std::vector<Input>& inputs);
    void endControl(char final, std::vector<Input>& inputs) const;
    void endString(std::vector<Input>& inputs) const;

    State m_state = State::ground;
    std::string m_sequence;
};

/// The background in an answer such as "11;rgb:ffff/ffff/dddd"; absent in any other.
[[nodiscard]] std::optional<Background> backgroundIn(std::string_view answer);

/// Light when it is brighter than half.
[[nodiscard]] platform::Appearance appearanceOf(const Background& background);

} // namespace vantor::hosts::terminal
