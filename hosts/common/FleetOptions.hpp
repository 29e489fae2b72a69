// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FleetHost.hpp"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace vantor::hosts::common {

/// The options that name machines on the network, the same in every program that shows some.
class FleetOptions {
public:
    /// Adds them to a program's own, under a heading of its help. None of them goes with `demo`, its option
    /// for a made-up machine. This must outlive the parse.
    void addTo(CLI::App& app, const std::string& heading, CLI::Option* demo);

    /// After a successful parse. Throws a CLI::ValidationError where what was given means nothing together.
    [[nodiscard]] FleetChoice choice() const;

    /// A choice as words of a command line.
    [[nodiscard]] static std::vector<std::string> words(const FleetChoice& choice);

private:
    FleetChoice m_choice;
    std::string m_every;
    std::string m_demo;
    std::string m_sort;
    CLI::Option* m_list = nullptr;
};

} // namespace vantor::hosts::common
