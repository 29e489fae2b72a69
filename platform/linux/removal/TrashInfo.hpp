// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::linux {

/// What a file info/NAME.trashinfo says (freedesktop.org's Trash specification, 1.0).
struct TrashInfo {
    std::string path;                    ///< where the item was, unescaped; bytes
    std::optional<std::int64_t> trashed; ///< seconds since 1970; the file has local time
};

/// Absent where the first line is not "[Trash Info]". Of keys that occur twice the first holds.
[[nodiscard]] std::optional<TrashInfo> parseTrashInfo(std::string_view text);

} // namespace vantor::platform::linux
