// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace vantor::hosts::widget {

enum class AppearanceChoice : std::uint8_t { automatic, light, dark };

/// What the command line asks for.
struct Options {
    std::optional<std::string> snapshot; ///< a file that ends in .png or .svg
    std::optional<bool> expanded;        ///< absent: as the host likes
    AppearanceChoice appearance = AppearanceChoice::automatic;
    double scale = 1; ///< pixels per point of a snapshot
    bool demo = false;
    bool onTop = false;
    bool onDesktop = false;
    bool frameless = false;
    bool tray = false;
    std::optional<bool> autostart; ///< write or remove the entry, and end
};

/// Reads a command line. Instead of options the exit status of a program that is done: 0 after --help and
/// --version, 2 after a line on standard error about an option that cannot be used.
[[nodiscard]] std::variant<Options, int> readOptions(int argc, const char* const* argv);

} // namespace vantor::hosts::widget
