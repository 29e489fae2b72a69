// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <utility>
#include <vector>

namespace vantor::hosts::common {

/// How a program's --help reads: each option with the one word that it takes, and no list of what the parser
/// knows about it.
class HelpFormatter final : public CLI::Formatter {
public:
    HelpFormatter() { column_width(32); }

    std::string make_usage(const CLI::App* app, std::string name) const override {
        return "\nUsage: " + (name.empty() ? app->get_name() : name) + " [options]\n\n";
    }
    /// Without the blank line before it: there is one after each group.
    std::string make_group(std::string group, bool is_positional,
                           std::vector<const CLI::Option*> options) const override {
        std::string text = CLI::Formatter::make_group(std::move(group), is_positional, std::move(options));
        return text.substr(text.find_first_not_of('\n'));
    }
    std::string make_option_opts(const CLI::Option* option) const override {
        return option->get_type_size() == 0 ? std::string() : " " + option->get_type_name();
    }
};

} // namespace vantor::hosts::common
