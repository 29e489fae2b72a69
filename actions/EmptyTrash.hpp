// SPDX-License-Identifier: MIT
#pragma once

#include "actions/Release.hpp"

#include <cstdint>
#include <optional>
#include <vector>

namespace vantor {

/// Empties the user's trashes for good. What is shown before and what is deleted is one list: what is thrown
/// away meanwhile stays, and so does what was exchanged meanwhile. Any thread.
class EmptyTrash {
public:
    /// Lists what would be deleted: all there is, or what was thrown away before a time (seconds since 1970);
    /// of that, items without a date stay out.
    explicit EmptyTrash(
        std::optional<std::int64_t> before = std::nullopt,
        const platform::Disposal::KeepGoing& keepGoing = [] { return true; });

    [[nodiscard]] const std::vector<platform::TrashItem>& items() const { return m_contents.items; }
    /// Which trashes are missing in the list, and why; in English, printable.
    [[nodiscard]] const std::vector<std::string>& problems() const { return m_contents.problems; }
    /// The sum of the list, in bytes.
    [[nodiscard]] std::uint64_t bytes() const;

    /// Deletes the list. `keepGoing` is asked before each entry; what was deleted by then is gone.
    [[nodiscard]] Released run(const platform::Disposal::KeepGoing& keepGoing) const;

private:
    platform::TrashContents m_contents;
};

} // namespace vantor
