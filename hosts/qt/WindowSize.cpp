// SPDX-License-Identifier: MIT
#include "hosts/qt/WindowSize.hpp"

#include <charconv>

namespace vantor::hosts::qt {

std::optional<int> takeNumber(std::string_view& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    text.remove_prefix(text.empty() ? 0 : 1);
    return number;
}

std::string sizeText(const QSize& size) {
    return std::to_string(size.width()) + ' ' + std::to_string(size.height());
}

std::optional<QSize> takeSize(std::string_view& text) {
    constexpr int greatest = 32'767; // pixels that a window of X11 may have
    const std::optional<int> width = takeNumber(text);
    const std::optional<int> height = width ? takeNumber(text) : std::nullopt;
    const bool isSize = height && *width > 0 && *height > 0 && *width <= greatest && *height <= greatest;
    return isSize ? std::optional(QSize(*width, *height)) : std::nullopt;
}

} // namespace vantor::hosts::qt
