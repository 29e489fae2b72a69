// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform {

/// What the figures and settings on screen are read from; each of them can fail by itself.
enum class Source : std::uint8_t { memory, storage, processor, network, preferences };

/// All sources, in the order in which they are listed everywhere.
inline constexpr std::array<Source, 5> allSources{Source::memory, Source::storage, Source::processor,
                                                  Source::network, Source::preferences};

/// The source's word in reports, on standard error and in the log: English, lower case, never translated.
[[nodiscard]] constexpr std::string_view sourceName(Source source) {
    constexpr std::array<std::string_view, allSources.size()> names{"memory", "storage", "processor",
                                                                    "network", "preferences"};
    return names.at(static_cast<std::size_t>(source));
}

/// A source that cannot be read right now, for hosts to show, and a short reason in English that names the
/// file or call.
struct SourceFailure {
    Source source = Source::memory;
    std::string reason;
    bool operator==(const SourceFailure&) const = default;
};

/// Whether a source is among the failures: its section has no figure then, whatever its labels still say.
[[nodiscard]] inline bool hasFailed(const std::vector<SourceFailure>& failures, Source source) {
    return std::ranges::find(failures, source, &SourceFailure::source) != failures.end();
}

} // namespace vantor::platform
