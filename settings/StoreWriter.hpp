// SPDX-License-Identifier: MIT
#pragma once

#include "settings/SettingText.hpp"
#include "settings/Settings.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantor {

/// One preference's new value; nothing takes it out of the store, so that the usual value holds.
struct SettingChange {
    const Setting* setting = nullptr;
    SettingValue value = {};
};

/// What is done about a file that is there and holds no preferences.
enum class BrokenStore : std::uint8_t {
    leave,   ///< nothing is written, and the failure says what is wrong
    setAside ///< it is kept under another name, and a new file begins
};

struct StoreOutcome {
    bool changed = false;                    ///< false too where the store held these values already
    std::string setAside = {};               ///< where a broken file is kept now
    std::optional<std::string> failure = {}; ///< why nothing was written, in English, the path first
    bool couldBeSetAside = false;            ///< whether `BrokenStore::setAside` would help
};

/// Writes preferences into the current viewer's store, all of them or none: other keys and their types, the
/// form of the file (binary or XML) and what other writers change meanwhile are kept. A new file is XML. A
/// colour is archived, and only written once our own reader has found the same colour in the archive. Values
/// are written as they are; `parseSetting` knows their ranges. Any thread.
[[nodiscard]] StoreOutcome changeStore(const std::vector<SettingChange>& changes,
                                       BrokenStore broken = BrokenStore::leave);

} // namespace vantor
