// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::remote {

/// The two text formats in which exporters answer. They are told apart by the answer's content type.
enum class ExpositionFormat {
    text,       ///< Prometheus's text format 0.0.4: times are milliseconds
    openMetrics ///< OpenMetrics 1.0: times are seconds, exemplars may follow, "# EOF" ends it
};

/// A label of a sample, its escapes undone: any bytes.
struct SampleLabel {
    std::string_view name;
    std::string_view value;
};

/// One line of the text.
struct Sample {
    std::string_view name;
    std::vector<SampleLabel> labels;
    double value = 0;              ///< may be not a number or infinite
    std::optional<double> seconds; ///< since 1970, where the line has a time

    /// The value of a label; empty where there is none, which the formats hold for the same.
    [[nodiscard]] std::string_view label(std::string_view labelName) const;
};

/// Takes the samples off an exporter's answer, one after the other. Comments are passed over, as are the
/// types: a reader of known families needs none. A line that breaks the format, has more than 128 labels or a
/// label of more than 4 KiB spoils itself only; so does a last line that no newline ends, since its number
/// may have been cut short. Not for several threads at once.
class ExpositionReader {
public:
    static constexpr std::size_t mostLabels = 128;
    static constexpr std::size_t longestLabel = 4096; ///< bytes, of a name and of a value as it is written

    using Wants = bool (*)(std::string_view name);

    /// Of families that are not wanted the names alone are read; null: all are.
    ExpositionReader(std::string_view text, ExpositionFormat format, Wants wants = nullptr)
        : m_text(text), m_format(format), m_wants(wants) {}

    /// The next sample, null at the end. It and the texts it points to hold until the next call.
    [[nodiscard]] const Sample* next();

    [[nodiscard]] std::size_t spoiledLines() const { return m_spoiled; }

private:
    [[nodiscard]] bool read(std::string_view line);
    [[nodiscard]] bool readLabels(std::string_view& rest);
    [[nodiscard]] bool readQuoted(std::string_view& rest, std::string_view& value);
    [[nodiscard]] bool readNumbers(std::string_view rest);
    [[nodiscard]] std::string_view withoutEscapes(std::string_view quoted);

    std::string_view m_text;
    ExpositionFormat m_format;
    Wants m_wants;
    Sample m_sample;
    std::string m_undone; ///< this line's label values that held escapes
    std::size_t m_spoiled = 0;
};

} // namespace vantor::platform::remote
