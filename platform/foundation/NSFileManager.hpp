// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor::platform {

enum NSSearchPathDirectory : std::uint8_t { NSDocumentDirectory = 9 };
enum NSSearchPathDomainMask : std::uint8_t { NSUserDomainMask = 1 };

enum NSURLResourceKey : std::uint8_t {
    NSURLVolumeTotalCapacityKey,
    NSURLVolumeAvailableCapacityKey,
    NSURLVolumeAvailableCapacityForImportantUsageKey,
};

/// The answer to one query, in bytes. A key that was not asked for, or that the file system does not know, is
/// absent.
class NSURLResourceValues {
public:
    [[nodiscard]] std::optional<std::int64_t> objectForKey(NSURLResourceKey key) const {
        return m_values[key];
    }
    /// What is kept back for the system, whatever was asked for: the platform has no key for it.
    [[nodiscard]] std::optional<std::int64_t> reservedCapacity() const { return m_reserved; }

private:
    friend class NSFileURL;
    std::array<std::optional<std::int64_t>, 3> m_values;
    std::optional<std::int64_t> m_reserved;
};

/// The place of a file or folder.
class NSFileURL {
public:
    explicit NSFileURL(std::shared_ptr<const std::string> path) : m_path(std::move(path)) {}

    [[nodiscard]] const std::string& path() const { return *m_path; }

    /// Values of the volume that holds this place, asked for in one query; absent when the query failed. Any
    /// thread.
    [[nodiscard]] std::optional<NSURLResourceValues>
    resourceValuesForKeys(std::initializer_list<NSURLResourceKey> keys) const;

private:
    std::shared_ptr<const std::string> m_path;
};

class NSFileManager {
public:
    [[nodiscard]] static NSFileManager defaultManager() { return {}; }

    /// The folders of that kind, the preferred one first; may be empty. Any thread.
    [[nodiscard]] std::vector<NSFileURL> URLsForDirectory(NSSearchPathDirectory directory,
                                                          NSSearchPathDomainMask domainMask) const;

private:
    NSFileManager() = default;
};

} // namespace vantor::platform
