// SPDX-License-Identifier: MIT
#pragma once

#include "platform/propertylist/PropertyListObject.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform {

/// A preference suite of the current viewer, as it was at the moment of opening: one property-list file with
/// a dictionary on top, read afresh by each `initWithSuiteName` and never written. Any thread.
class NSUserDefaults {
public:
    /// Absent without a message when there is no usable file or it holds no dictionary.
    [[nodiscard]] static std::optional<NSUserDefaults> initWithSuiteName(std::string_view suiteName);

    /// A Boolean as it is; a number is true unless zero; a string is true when, after leading blanks, it
    /// starts with t, T, y or Y, or with a digit 1-9 behind an optional sign and zeros. Anything
    /// else is false, and so is a key without a value.
    [[nodiscard]] bool boolForKey(std::string_view key) const;

    /// A stored string; absent for every other kind.
    [[nodiscard]] std::optional<std::string> stringForKey(std::string_view key) const;

    /// The stored object as it is.
    [[nodiscard]] std::optional<PropertyListObject> objectForKey(std::string_view key) const;

private:
    explicit NSUserDefaults(PropertyListObject dictionary) : m_dictionary(std::move(dictionary)) {}
    PropertyListObject m_dictionary;
};

/// What a host may say once: which file of a suite is there but cannot be used, and why, as one line in
/// English without control characters. Absent when the suite opens or has no file.
[[nodiscard]] std::optional<std::string> suiteProblem(std::string_view suiteName);

} // namespace vantor::platform
