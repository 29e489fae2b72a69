// SPDX-License-Identifier: MIT
#include "platform/foundation/NSLocalizedString.hpp"

#include "platform/viewer/Viewer.hpp"

#include <algorithm>
#include <optional>

namespace vantor::platform {

std::string NSLocalizedString(std::string_view key) {
    if (std::optional<std::string> translated = currentViewer().localizedString(key)) {
        return *std::move(translated);
    }
    const std::span<const EnglishText> texts = englishTexts();
    const auto found = std::ranges::lower_bound(texts, key, {}, &EnglishText::key);
    return std::string(found != texts.end() && found->key == key ? found->text : key);
}

std::string textWithValue(std::string_view text, std::string_view name, std::string_view value) {
    const std::string placeholder = std::string("{").append(name).append("}");
    std::string result;
    for (std::size_t at = text.find(placeholder); at != std::string_view::npos; at = text.find(placeholder)) {
        result.append(text.substr(0, at)).append(value);
        text.remove_prefix(at + placeholder.size());
    }
    return result.append(text);
}

} // namespace vantor::platform
