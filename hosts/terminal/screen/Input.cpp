// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/Input.hpp"

#include "platform/core/Utf8.hpp"

#include <charconv>
#include <cmath>
#include <cstddef>

namespace vantor::hosts::terminal {

namespace {

constexpr char escape = '\033';
constexpr char bell = '\a';
constexpr std::size_t longestSequence = 256; // what is longer is no answer of a terminal

/// A number and the character after it, taken off the front of a text; -1 where there is none.
int takeNumber(std::string_view& text) {
    int number = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (!text.empty()) {
        text.remove_prefix(1);
    }
    return error == std::errc() ? number : -1;
}

/// A component of one to four hexadecimal digits as a byte; -1 if it is none.
int component(std::string_view digits) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (error != std::errc() || end != digits.data() + digits.size() || digits.size() > 4) {
        return -1;
    }
    return static_cast<int>(std::lround(255.0 * value / ((1U << (4 * digits.size())) - 1)));
}

/// By the last character of a sequence, and of the older ones by the number before it.
std::optional<CursorKey> cursorKey(char final, int number) {
    switch (final) {
    case 'A':
        return CursorKey::up;
    case 'B':
        return CursorKey::down;
    case 'C':
        return CursorKey::right;
    case 'D':
        return CursorKey::left;
    case 'H':
        return CursorKey::home;
    case 'F':
        return CursorKey::end;
    case '~':
        return number == 1 || number == 7   ? std::optional(CursorKey::home)
               : number == 4 || number == 8 ? std::optional(CursorKey::end)
               : number == 5                ? std::optional(CursorKey::pageUp)
               : number == 6                ? std::optional(CursorKey::pageDown)
                                            : std::nullopt;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<Background> backgroundIn(std::string_view answer) {
    const bool hasOpacity = answer.starts_with("11;rgba:"); // which comes last and is of no use here
    const std::string_view head = hasOpacity ? "11;rgba:" : "11;rgb:";
    if (!answer.starts_with(head)) {
        return std::nullopt;
    }
    answer.remove_prefix(head.size());
    Background background;
    for (int i = 0; i < 3; ++i) {
        const std::size_t end = answer.find('/');
        const int part = component(answer.substr(0, end));
        answer.remove_prefix(end == std::string_view::npos ? answer.size() : end + 1);
        if (part < 0) {
            return std::nullopt;
        }
        background.rgb = background.rgb << 8 | static_cast<std::uint32_t>(part);
    }
    return background;
}

platform::Appearance appearanceOf(const Background& background) {
    const auto part = [&](unsigned shift) { return static_cast<double>(background.rgb >> shift & 0xFF); };
    const double brightness = 0.299 * part(16) + 0.587 * part(8) + 0.114 * part(0);
    return brightness > 127.5 ? platform::Appearance::light : platform::Appearance::dark;
}

std::vector<Input> InputParser::parse(std::string_view bytes) {
    std::vector<Input> inputs;
    for (const char byte : bytes) {
        take(byte, inputs);
    }
    return inputs;
}

void InputParser::take(char byte, std::vector<Input>& inputs) {
    switch (m_state) {
    case State::ground:
        if (byte == escape) {
            m_state = State::escape;
        } else {
            takeCharacter(byte, inputs);
        }
        return;
    case State::escape:
        m_sequence.clear();
        m_state = byte == '['                                 ? State::control
                  : byte == ']' || byte == 'P' || byte == '_' ? State::string
                  : byte == 'O'                               ? State::single
                  : byte == escape                            ? State::escape
                                                              : State::ground;
        return;
    case State::single: // a function key: one character follows
        m_state = State::ground;
        if (const std::optional<CursorKey> key = cursorKey(byte, 0)) {
            inputs.emplace_back(*key);
        }
        return;
    case State::control:
        if (byte >= '@' && byte <= '~') {
            endControl(byte, inputs);
            m_state = State::ground;
            return;
        }
        break;
    case State::string:
        if (byte == bell || byte == escape) {
            endString(inputs);
            m_state = byte == bell ? State::ground : State::stringEscape;
            return;
        }
        break;
    case State::stringEscape: // the backslash of the string terminator
        m_state = State::ground;
        return;
    }
    m_sequence.push_back(byte);
    if (m_sequence.size() > longestSequence) {
        m_state = State::ground;
    }
}

/// Bytes that are no UTF-8 are dropped.
void InputParser::takeCharacter(char byte, std::vector<Input>& inputs) {
    const auto value = static_cast<unsigned char>(byte);
    const bool isMore = (value & 0xC0U) == 0x80U;
    if (!isMore) {
        m_character.clear();
    } else if (m_character.empty()) {
        return;
    }
    m_character.push_back(byte);
    const auto first = static_cast<unsigned char>(m_character.front());
    const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (m_character.size() < length) {
        return;
    }
    std::string_view whole = m_character;
    if (const std::optional<char32_t> character = platform::takeUtf8(whole)) {
        inputs.emplace_back(KeyPress{*character});
    }
    m_character.clear();
}

KeyPress InputParser::endEscape() {
    m_state = State::ground;
    return {static_cast<char32_t>(escape)};
}

void InputParser::endControl(char final, std::vector<Input>& inputs) const {
    std::string_view text = m_sequence;
    if (final == 'c' && text.starts_with('?')) {
        inputs.emplace_back(AnswersEnded{});
    } else if (final == 'M' && text.starts_with('<')) { // a button goes down: <button;column;row
        text.remove_prefix(1);
        const int button = takeNumber(text);
        const int column = takeNumber(text);
        const int row = takeNumber(text);
        constexpr int wheelUp = 64;
        if (button == 0 && column > 0 && row > 0) {
            inputs.emplace_back(Click{column - 1, row - 1});
        } else if (button == wheelUp || button == wheelUp + 1) {
            inputs.emplace_back(Wheel{button == wheelUp});
        }
    } else if (text.find_first_not_of("0123456789;") == std::string_view::npos) {
        if (const std::optional<CursorKey> key = cursorKey(final, takeNumber(text))) {
            inputs.emplace_back(*key);
        }
    }
}

void InputParser::endString(std::vector<Input>& inputs) const {
    if (const std::optional<Background> background = backgroundIn(m_sequence)) {
        inputs.emplace_back(*background);
    }
}

} // namespace vantor::hosts::terminal
