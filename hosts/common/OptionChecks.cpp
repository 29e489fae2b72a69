// SPDX-License-Identifier: MIT
#include "hosts/common/OptionChecks.hpp"

#include "hosts/common/StandardStreams.hpp"
#include "platform/core/PrintableText.hpp"

#include <algorithm>
#include <charconv>
#include <iostream>
#include <utility>

namespace vantor::hosts::common {

namespace {

/// The parser's words for what was wrong, but for the one case that it counts instead of saying.
std::string complaint(const CLI::ParseError& problem) {
    std::string text = problem.what();
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&problem) != nullptr) {
        text = text.substr(0, text.find(':')) + ": its value is missing";
    }
    return platform::printableText(text) + "; see --help";
}

} // namespace

std::optional<double> plainNumber(const std::string& text) {
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && last == end ? std::optional(value) : std::nullopt;
}

CLI::Validator oneOf(std::vector<std::string_view> words) {
    return {[words = std::move(words)](const std::string& word) {
                return std::ranges::find(words, word) != words.end() ? std::string()
                                                                     : "\"" + word + "\" is not known";
            },
            ""};
}

std::string scaleProblem(const std::string& text) {
    constexpr double greatest = 8;
    const std::optional<double> scale = plainNumber(text);
    return scale && *scale >= 0.5 && *scale <= greatest ? std::string() : "must be a number from 0.5 to 8";
}

int endAfter(const CLI::ParseError& problem, CLI::App& app) {
    if (problem.get_exit_code() != 0) {
        complain(app.get_name(), complaint(problem));
        return 2;
    }
    if (app.exit(problem) == 0 && std::cout.flush()) {
        return 0;
    }
    complain(app.get_name(), "standard output cannot be written");
    return 1;
}

} // namespace vantor::hosts::common
