// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Sampler.hpp"
#include "platform/drawing/UIColor.hpp"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantor::hosts::app {

/// What the command line asks for.
struct Options {
    std::optional<PageKind> page;
    bool cleansRam = false;                         ///< a link asked for memory to be freed
    std::optional<std::string> snapshot;            ///< a file that ends in .png or .svg
    std::optional<platform::Appearance> appearance; ///< absent: as the desktop has it
    double scale = 1;                               ///< pixels per point of a snapshot
    bool demo = false;
};

/// Reads a command line. Instead of options the exit status of a program that is done: 0 after --help and
/// --version, 2 after a line on standard error about an option that cannot be used. A link that is none of
/// the four asks for the first page and nothing else.
[[nodiscard]] std::variant<Options, int> readOptions(int argc, const char* const* argv);

/// What a window was asked for, as words for the one that runs already, and back. Words of another kind ask
/// for nothing.
[[nodiscard]] std::vector<std::string> windowWords(const Options& options);
[[nodiscard]] Options optionsFromWords(const std::vector<std::string>& words);

} // namespace vantor::hosts::app
