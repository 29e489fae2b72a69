// SPDX-License-Identifier: MIT
#pragma once

#include "platform/propertylist/PropertyList.hpp"

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

/// Why the suite that was opened last on the current viewer cannot be used, be it that its file cannot be
/// read or that it holds no list: one line in English without control characters, its path first, such as
/// "…/group.vantor.plist: is not a regular file". Absent when it could be used or has no file. Any thread.
[[nodiscard]] std::optional<std::string> suiteProblem();

/// Why a list is no suite, in English; empty where it is a dictionary.
[[nodiscard]] std::string suiteListProblem(const PropertyListResult& list);

} // namespace vantor::platform
