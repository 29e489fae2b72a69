// SPDX-License-Identifier: MIT
#include "platform/remote/answers/QueryAnswer.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/remote/exposition/SampleNumber.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

namespace vantor::platform::remote {

namespace {

constexpr std::size_t deepest = 16;
constexpr std::size_t mostLabels = 128;
constexpr std::size_t longestLabel = 4096;
constexpr std::size_t mostPoints = 11000; // the server's own limit
constexpr std::size_t longestReason = 256;

/// Follows the events of the parser by where in the answer they happen. A row's texts go where the last row's
/// were, so that thousands of rows of one kind take no memory of their own.
class Reader final : public nlohmann::json_sax<nlohmann::json> {
public:
    explicit Reader(const std::function<void(const AnswerSeries&)>& take) : m_take(take) {}

    [[nodiscard]] QueryAnswer finish(bool parsed) {
        m_answer.isWhole = parsed && m_status == "success";
        if (!m_answer.isWhole && m_answer.problem.empty()) {
            const std::string reason = m_errorType + (m_error.empty() ? "" : ": ") + m_error;
            m_answer.problem = parsed && !reason.empty() ? printableText(reason, longestReason)
                                                         : "the answer is none of Prometheus's";
        }
        return std::move(m_answer);
    }

    bool null() override { return true; }
    bool boolean(bool /*value*/) override { return true; }
    bool number_integer(number_integer_t value) override { return takeNumber(static_cast<double>(value)); }
    bool number_unsigned(number_unsigned_t value) override { return takeNumber(static_cast<double>(value)); }
    bool number_float(number_float_t value, const string_t& /*text*/) override { return takeNumber(value); }
    bool binary(binary_t& /*value*/) override { return true; }
    bool string(string_t& text) override;
    bool key(string_t& name) override {
        m_key = name;
        return true;
    }
    bool start_object(std::size_t /*count*/) override { return enter(objectPlace()); }
    bool start_array(std::size_t /*count*/) override { return enter(arrayPlace()); }
    bool end_object() override { return leave(); }
    bool end_array() override { return leave(); }
    bool parse_error(std::size_t /*place*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        m_answer.problem = "the answer is no JSON, or ends early";
        return false;
    }

private:
    enum class Place : std::uint8_t { root, data, result, series, labels, points, point, warnings, other };

    [[nodiscard]] bool isAt(Place place) const { return !m_places.empty() && m_places.back() == place; }
    [[nodiscard]] Place objectPlace() const {
        if (m_places.empty()) {
            return Place::root;
        }
        if (isAt(Place::root) && m_key == "data") {
            return Place::data;
        }
        if (isAt(Place::result)) {
            return Place::series;
        }
        return isAt(Place::series) && m_key == "metric" ? Place::labels : Place::other;
    }
    [[nodiscard]] Place arrayPlace() const {
        if (isAt(Place::data) && m_key == "result") {
            return Place::result;
        }
        if (isAt(Place::root) && m_key == "warnings") {
            return Place::warnings;
        }
        if (isAt(Place::series) && m_key == "values") {
            return Place::points;
        }
        return isAt(Place::points) || (isAt(Place::series) && m_key == "value") ? Place::point : Place::other;
    }
    bool enter(Place place) {
        if (m_places.size() == deepest) {
            return refuse("the answer is nested too deep");
        }
        if (place == Place::series ||
            place == Place::result) { // a scalar has its sample in the result itself
            m_labels = 0;
            m_series.points.clear();
        }
        m_places.push_back(place);
        return true;
    }
    bool leave() {
        const bool ends = isAt(Place::series) || (isAt(Place::result) && m_answer.series == 0);
        m_places.pop_back();
        if (ends && !m_series.points.empty()) {
            ++m_answer.series;
            m_series.labels.resize(m_labels);
            m_take(m_series);
        }
        return true;
    }
    bool refuse(const char* why) {
        m_answer.problem = why;
        return false;
    }
    bool takeNumber(double value) {
        m_time = value;
        return true;
    }
    bool takeLabel(const std::string& value) {
        if (m_labels == mostLabels || m_key.size() > longestLabel || value.size() > longestLabel) {
            return refuse("the answer has a series with too many or too long labels");
        }
        if (m_labels == m_series.labels.size()) {
            m_series.labels.emplace_back();
        }
        AnswerSeries::Label& label = m_series.labels[m_labels++];
        label.name = m_key;
        label.value = value;
        return true;
    }
    bool takePoint(const std::string& text) {
        const std::optional<double> value = sampleNumber(text);
        if (m_series.points.size() == mostPoints) {
            return refuse("the answer has a series with too many samples");
        }
        if (value) {
            m_series.points.push_back({m_time, *value});
        }
        return true;
    }

    const std::function<void(const AnswerSeries&)>& m_take;
    QueryAnswer m_answer;
    std::vector<Place> m_places; ///< from the outside in
    std::string m_key;           ///< the last one
    std::string m_status;
    std::string m_errorType;
    std::string m_error;
    AnswerSeries m_series;
    std::size_t m_labels = 0; ///< of the row so far
    double m_time = 0;
};

bool Reader::string(string_t& text) {
    if (m_places.empty()) {
        return true;
    }
    switch (m_places.back()) {
    case Place::labels:
        return takeLabel(text);
    case Place::point:
    case Place::result:
        return takePoint(text);
    case Place::warnings:
        m_answer.hasWarnings = true;
        return true;
    case Place::root:
        if (m_key == "status") {
            m_status = text;
        } else if (m_key == "error") {
            m_error = text;
        } else if (m_key == "errorType") {
            m_errorType = text;
        }
        return true;
    default:
        return true;
    }
}

} // namespace

std::string_view AnswerSeries::label(std::string_view name) const {
    const auto found = std::ranges::find(labels, name, &Label::name);
    return found == labels.end() ? std::string_view() : found->value;
}

QueryAnswer readQueryAnswer(std::string_view json, const std::function<void(const AnswerSeries&)>& take) {
    Reader reader(take);
    const bool parsed = nlohmann::json::sax_parse(json.begin(), json.end(), &reader);
    return reader.finish(parsed);
}

} // namespace vantor::platform::remote
