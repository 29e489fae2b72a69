// SPDX-License-Identifier: MIT
#include "fleet/NameOrder.hpp"

#include <algorithm>

namespace vantor::fleet {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

char small(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// The digits at the front of a text, without the zeros before them; taken off it.
std::string_view takeNumber(std::string_view& text) {
    const auto end = static_cast<std::size_t>(std::ranges::find_if_not(text, isDigit) - text.begin());
    std::string_view digits = text.substr(0, end);
    text.remove_prefix(end);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

} // namespace

bool comesBefore(std::string_view one, std::string_view other) {
    std::string_view left = one;
    std::string_view right = other;
    while (!left.empty() && !right.empty()) {
        if (isDigit(left.front()) && isDigit(right.front())) {
            const std::string_view leftNumber = takeNumber(left);
            const std::string_view rightNumber = takeNumber(right);
            if (leftNumber.size() != rightNumber.size()) {
                return leftNumber.size() < rightNumber.size();
            }
            if (leftNumber != rightNumber) {
                return leftNumber < rightNumber;
            }
            continue;
        }
        const auto leftLetter = static_cast<unsigned char>(small(left.front()));
        const auto rightLetter = static_cast<unsigned char>(small(right.front()));
        if (leftLetter != rightLetter) {
            return leftLetter < rightLetter;
        }
        left.remove_prefix(1);
        right.remove_prefix(1);
    }
    return left.empty() != right.empty() ? left.empty() : one < other;
}

std::string smallLetters(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), small);
    return result;
}

bool containsSmall(std::string_view text, std::string_view smallPart) {
    const auto isSame = [](char letter, char wanted) { return small(letter) == wanted; };
    return smallPart.empty() || !std::ranges::search(text, smallPart, isSame).empty();
}

} // namespace vantor::fleet
