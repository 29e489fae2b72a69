// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Guarded.hpp"

#include <atomic>
#include <map>
#include <optional>
#include <string>

namespace vantor::SystemValues {

/// The process-wide store of every sysctl value that was read: full key to the value's text. Any thread.
///
/// With replay on, a key that the store holds is answered from it and the kernel is not asked; a key that it
/// does not hold is read as ever. Nothing empties the store: assign to `records` for that.
class SysctlQueryStorage {
public:
    using Records = std::map<std::string, std::string>;

    SysctlQueryStorage() = delete;

    /// Off: nothing is stored and nothing is replayed.
    static inline std::atomic<bool> enabled{true};
    /// The replay switch.
    static inline std::atomic<bool> recoverEveryQueryFromStorage{false};
    /// Reading gives a copy: `SysctlQueryStorage::records.value()`.
    static inline constinit PackagesBase::Guarded<Records> records;

    /// The stored text of a key, where both switches are on and the store holds it.
    [[nodiscard]] static std::optional<std::string> recovered(const std::string& key);
    /// After a read of a text: an absent one takes its key out of the store.
    static void storeText(const std::string& key, const std::optional<std::string>& text);
    /// After a read of a number that succeeded. One that failed leaves the store as it was.
    static void storeNumber(const std::string& key, std::string text);
};

} // namespace vantor::SystemValues
