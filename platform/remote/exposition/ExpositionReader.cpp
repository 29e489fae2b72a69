// SPDX-License-Identifier: MIT
#include "platform/remote/exposition/ExpositionReader.hpp"

#include "platform/remote/exposition/SampleNumber.hpp"

#include <algorithm>

namespace vantor::platform::remote {

namespace {

bool isBlank(char sign) {
    return sign == ' ' || sign == '\t';
}

void skipBlanks(std::string_view& text) {
    const auto word = std::ranges::find_if_not(text, isBlank);
    text.remove_prefix(static_cast<std::size_t>(word - text.begin()));
}

bool isNameSign(char sign) {
    return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') || (sign >= '0' && sign <= '9') ||
           sign == '_' || sign == ':';
}

/// A metric's or label's name; empty where the text begins with none.
std::string_view takeName(std::string_view& text) {
    const auto end = std::ranges::find_if_not(text, isNameSign);
    const std::string_view name = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    if (name.empty() || (name.front() >= '0' && name.front() <= '9')) {
        return {};
    }
    text.remove_prefix(name.size());
    return name;
}

std::string_view nameIn(std::string_view line) {
    return takeName(line);
}

/// What stands before the next blank.
std::string_view takeWord(std::string_view& text) {
    skipBlanks(text);
    const auto end = std::ranges::find_if(text, isBlank);
    const std::string_view word = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(word.size());
    return word;
}

bool take(std::string_view& text, char sign) {
    skipBlanks(text);
    if (!text.starts_with(sign)) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

} // namespace

std::string_view Sample::label(std::string_view labelName) const {
    const auto found = std::ranges::find(labels, labelName, &SampleLabel::name);
    return found == labels.end() ? std::string_view() : found->value;
}

const Sample* ExpositionReader::next() {
    while (!m_text.empty()) {
        const std::size_t end = m_text.find('\n');
        std::string_view line = m_text.substr(0, end);
        m_text.remove_prefix(end == std::string_view::npos ? m_text.size() : end + 1);
        skipBlanks(line);
        if (m_format == ExpositionFormat::openMetrics && line == "# EOF") {
            m_text = {};
            return nullptr;
        }
        if (line.empty() || line.front() == '#') {
            continue;
        }
        if (m_wants != nullptr && isNameSign(line.front()) && !m_wants(nameIn(line))) {
            continue;
        }
        if (end != std::string_view::npos && read(line)) {
            return &m_sample;
        }
        ++m_spoiled;
    }
    return nullptr;
}

bool ExpositionReader::read(std::string_view line) {
    m_sample.labels.clear();
    m_sample.seconds.reset();
    m_undone.clear();
    if (line.find('\\') != std::string_view::npos) {
        m_undone.reserve(line.size()); // what points into it must stay
    }
    m_sample.name = takeName(line);
    if (take(line, '{') && !readLabels(line)) {
        return false;
    }
    return !m_sample.name.empty() && readNumbers(line);
}

/// From behind the brace to behind its end. A quoted text that stands for itself is the metric's name, in the
/// style of Prometheus 3.
bool ExpositionReader::readLabels(std::string_view& rest) {
    while (!take(rest, '}')) {
        std::string_view name;
        const bool isQuoted = take(rest, '"');
        if (!isQuoted) {
            name = takeName(rest);
        }
        if (isQuoted ? !readQuoted(rest, name) : name.empty()) {
            return false;
        }
        if (take(rest, '=')) {
            std::string_view value;
            if (!take(rest, '"') || !readQuoted(rest, value) || name.size() > longestLabel ||
                m_sample.labels.size() == mostLabels) {
                return false;
            }
            m_sample.labels.push_back({name, value});
        } else if (isQuoted && m_sample.name.empty()) {
            m_sample.name = name;
        } else {
            return false;
        }
        if (!take(rest, ',') && !rest.starts_with('}')) {
            return false;
        }
    }
    return true;
}

/// From behind one quotation mark to behind the other.
bool ExpositionReader::readQuoted(std::string_view& rest, std::string_view& value) {
    std::size_t end = 0;
    bool hasEscapes = false;
    for (; end < rest.size() && rest[end] != '"'; ++end) {
        if (rest[end] == '\\') {
            hasEscapes = true;
            ++end;
        }
    }
    if (end >= rest.size() || end > longestLabel) {
        return false;
    }
    value = hasEscapes ? withoutEscapes(rest.substr(0, end)) : rest.substr(0, end);
    rest.remove_prefix(end + 1);
    return true;
}

/// An unknown escape stands for the sign behind the backslash.
std::string_view ExpositionReader::withoutEscapes(std::string_view quoted) {
    const std::size_t begin = m_undone.size();
    for (std::size_t i = 0; i < quoted.size(); ++i) {
        if (quoted[i] != '\\') {
            m_undone += quoted[i];
        } else {
            ++i;
            m_undone += quoted[i] == 'n' ? '\n' : quoted[i];
        }
    }
    return std::string_view(m_undone).substr(begin);
}

bool ExpositionReader::readNumbers(std::string_view rest) {
    const std::optional<double> value = sampleNumber(takeWord(rest));
    if (!value) {
        return false;
    }
    m_sample.value = *value;
    const std::string_view time = takeWord(rest);
    const bool mayHaveExemplar = m_format == ExpositionFormat::openMetrics;
    if (time.empty() || (mayHaveExemplar && time == "#")) {
        return true;
    }
    constexpr double millisecond = 1e-3;
    const std::optional<double> number = sampleNumber(time);
    if (!number) {
        return false;
    }
    m_sample.seconds = m_format == ExpositionFormat::text ? *number * millisecond : *number;
    const std::string_view more = takeWord(rest);
    return more.empty() || (mayHaveExemplar && more == "#");
}

} // namespace vantor::platform::remote
