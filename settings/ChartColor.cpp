// SPDX-License-Identifier: MIT
#include "settings/ChartColor.hpp"

#include "logging/Logga.hpp"
#include "platform/core/FatalStop.hpp"
#include "platform/foundation/NSKeyedUnarchiver.hpp"
#include "platform/foundation/NSLocalizedString.hpp"
#include "settings/SharedStore.hpp"

#include <variant>

namespace vantor {

using platform::NSLocalizedString;
using platform::textWithValue;

ChartColorRecord chartColorIn(const platform::NSUserDefaults& store) {
    const std::optional<platform::PropertyListObject> object = store.objectForKey(SettingsKey::chartcolor);
    if (!object) {
        return {};
    }
    const std::optional<std::string_view> data = object->data();
    if (!data) {
        return {.problem = NSLocalizedString("setting_NODATA")};
    }
    const platform::UnarchivedObject decoded =
        platform::NSKeyedUnarchiver::unarchiveTopLevelObjectWithData(*data);
    if (const auto* const error = std::get_if<platform::DecodingError>(&decoded)) {
        return {.isUndecodable = true,
                .problem = textWithValue(NSLocalizedString("setting_NOCOLOR"), "reason", error->reason)};
    }
    if (const auto* const other = std::get_if<platform::OtherClass>(&decoded)) {
        return {.isOtherClass = true,
                .problem = textWithValue(NSLocalizedString("setting_OTHERCLASS"), "class", other->className)};
    }
    const auto* const color = std::get_if<platform::UIColor>(&decoded);
    if (color == nullptr || *color == platform::UIColor::clearColor()) {
        return {};
    }
    return {.color = *color};
}

std::optional<platform::UIColor> storedChartColor() {
    const std::optional<platform::NSUserDefaults> store = openSharedStore();
    const ChartColorRecord record = store ? chartColorIn(*store) : ChartColorRecord();
    if (record.isUndecodable) {
        Logga::debug("ERRORE in funzione fromData() di Config");
    }
    if (record.isOtherClass) {
        platform::fatalStop("the archive under \"chartcolor\" holds no colour");
    }
    return record.color;
}

std::optional<platform::UIColor> usableChartColor() {
    const std::optional<platform::NSUserDefaults> store = openSharedStore();
    return store ? chartColorIn(*store).color : std::nullopt;
}

} // namespace vantor
