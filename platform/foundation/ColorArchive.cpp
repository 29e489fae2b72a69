// SPDX-License-Identifier: MIT
#include "platform/foundation/ColorArchive.hpp"

#include <cstdint>
#include <string_view>

namespace vantor::platform {

namespace {

std::optional<double> numberUnder(const PropertyListObject& archived, std::string_view key) {
    const std::optional<PropertyListObject> value = archived.objectForKey(key);
    return value ? value->number() : std::nullopt;
}

std::optional<double> component(const PropertyListObject& archived, std::string_view exactKey) {
    constexpr std::string_view suffix = "-Double";
    if (const std::optional<double> exact = numberUnder(archived, exactKey)) {
        return exact;
    }
    return numberUnder(archived, exactKey.substr(0, exactKey.size() - suffix.size()));
}

std::optional<std::int64_t> componentCount(const PropertyListObject& archived) {
    const std::optional<PropertyListObject> count = archived.objectForKey("UIColorComponentCount");
    return count ? count->integer() : std::nullopt;
}

} // namespace

std::optional<UIColor> colorFromArchive(const PropertyListObject& archived,
                                        const std::optional<PropertyListObject>& systemName) {
    const std::optional<std::string_view> name = systemName ? systemName->string() : std::nullopt;
    if (const std::optional<UIColor> known = name ? UIColor::named(*name) : std::nullopt) {
        return known;
    }
    const std::optional<double> alpha = component(archived, "UIAlpha-Double");
    const std::optional<std::int64_t> count = componentCount(archived);
    if (count == 4) {
        const std::optional<double> red = component(archived, "UIRed-Double");
        const std::optional<double> green = component(archived, "UIGreen-Double");
        const std::optional<double> blue = component(archived, "UIBlue-Double");
        if (red && green && blue && alpha) {
            return UIColor::colorWithRed(*red, *green, *blue, *alpha);
        }
    }
    if (count == 2) {
        const std::optional<double> white = component(archived, "UIWhite-Double");
        if (white && alpha) {
            return UIColor::colorWithWhite(*white, *alpha);
        }
    }
    return std::nullopt;
}

} // namespace vantor::platform
