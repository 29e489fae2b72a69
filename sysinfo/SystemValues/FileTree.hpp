// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Text.hpp"

#include <any>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::SystemValues {

/// The one implementation behind the file-system fetch protocols, static and instance. Logs through
/// `Printer`.
class FileTree {
public:
    using Entries = std::map<std::string, bool>;    ///< name to: is it a folder?
    using Names = std::vector<std::string>;         ///< in alphabetical order
    using Values = std::map<std::string, std::any>; ///< name to a std::string

    explicit FileTree(std::string base) : m_base(std::move(base)) {}

    /// The file's text without one line feed at its end. Absent where it cannot be read or is not UTF-8.
    [[nodiscard]] std::optional<std::string> text(std::string_view name) const;
    /// That text's lossless parse.
    template<PackagesBase::FixedWidthInteger T>
    [[nodiscard]] std::optional<T> integer(std::string_view name) const {
        const std::optional<std::string> digits = text(name);
        return digits ? PackagesBase::parseInteger<T>(*digits) : std::nullopt;
    }
    /// The file's bytes, all of them.
    [[nodiscard]] std::optional<PackagesBase::Data> data(std::string_view name) const;

    /// Every entry of a folder. An entry that is gone before it was looked at, or that is a link to nothing,
    /// is left out.
    [[nodiscard]] std::optional<Entries> entries(std::string_view name) const;
    /// The names of the folders among them, or of everything else.
    [[nodiscard]] std::optional<Names> names(std::string_view name, bool folders) const;
    /// Each file's text. A file that cannot be read is left out.
    [[nodiscard]] std::optional<Values> values(std::string_view name) const;

private:
    [[nodiscard]] std::string pathOf(std::string_view name) const;

    std::string m_base;
};

} // namespace vantor::SystemValues
