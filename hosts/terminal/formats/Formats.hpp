// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/formats/Reading.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace vantor::hosts::terminal {

enum class Format : std::uint8_t { text, json, waybar, prometheus };

/// A reading as a format writes it, ending in a newline. With a field, only that section: `text` and `waybar`
/// know that. Pure, but for `text`, which writes the user's character set.
[[nodiscard]] std::string formatted(const Reading& reading, Format format,
                                    std::optional<platform::Source> field);

/// The page for people: sections with captions and figures, aligned by the width that they take on a screen.
[[nodiscard]] std::string plainText(const Reading& reading);
/// One section as a short line, such as "34%".
[[nodiscard]] std::string plainText(const Reading& reading, platform::Source field);

/// One JSON object in one line, as docs/vantor-report.schema.json describes it.
[[nodiscard]] std::string jsonText(const Reading& reading);

/// One JSON object in one line, as Waybar's custom modules take it (return-type json): "text", "tooltip" (in
/// Pango markup), "class", "alt" (the class once more, for icons) and "percentage". Texts are in the user's
/// language. Without a field: all three charts with their names, in the class and percentage of the fullest.
/// A section that cannot be read has the class "unavailable" and no percentage; where others can, both
/// classes stand side by side.
[[nodiscard]] std::string waybarText(const Reading& reading, std::optional<platform::Source> field);

/// The text exposition format 0.0.4 for a textfile collector. Bytes and ratios only; the figures of a source
/// that failed are left out.
[[nodiscard]] std::string prometheusText(const Reading& reading);

/// A source's one word for programs, on command lines as in reports: "ram", "storage", "cpu", "network",
/// "preferences".
[[nodiscard]] std::string_view wordOf(platform::Source source);

/// A figure or, where there is none, a dash; and so for a section's ring, as "34%".
[[nodiscard]] std::string figureOf(const Reading::Row& row);
[[nodiscard]] std::string percentOf(const Reading::Section& section);

/// The figures of a section without a ring in one line; with their signs or, for a screen that does not have
/// these characters, with their captions.
[[nodiscard]] std::string rowsLine(const Reading::Section& section, bool withSigns);

} // namespace vantor::hosts::terminal
