// SPDX-License-Identifier: MIT
#include "settings/ChartColor.hpp"

#include "logging/Logga.hpp"
#include "platform/core/FatalStop.hpp"
#include "platform/foundation/NSKeyedUnarchiver.hpp"
#include "settings/SharedStore.hpp"

#include <variant>

namespace vantor {

std::optional<platform::UIColor> storedChartColor() {
    const auto store = openSharedStore();
    const auto object = store ? store->objectForKey(SettingsKey::chartcolor) : std::nullopt;
    const auto data = object ? object->data() : std::nullopt;
    if (!data) {
        return std::nullopt;
    }
    const platform::UnarchivedObject decoded =
        platform::NSKeyedUnarchiver::unarchiveTopLevelObjectWithData(*data);
    if (std::holds_alternative<platform::DecodingError>(decoded)) {
        Logga::debug("ERRORE in funzione fromData() di Config");
        return std::nullopt;
    }
    if (std::holds_alternative<platform::OtherClass>(decoded)) {
        platform::fatalStop("the archive under \"chartcolor\" holds no colour");
    }
    const auto* const color = std::get_if<platform::UIColor>(&decoded);
    if (color == nullptr || *color == platform::UIColor::clearColor()) {
        return std::nullopt;
    }
    return *color;
}

} // namespace vantor
