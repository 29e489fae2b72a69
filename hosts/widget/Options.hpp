// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FleetHost.hpp"
#include "hosts/common/RemoteNode.hpp"
#include "platform/drawing/UIColor.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantor::hosts::widget {

enum class AppearanceChoice : std::uint8_t { automatic, light, dark };

/// What the command line asks for.
struct Options {
    std::optional<std::string> snapshot; ///< a file that ends in .png or .svg
    std::optional<bool> expanded;        ///< absent: as the host likes
    std::optional<AppearanceChoice> appearance;
    double scale = 1; ///< pixels per point of a snapshot
    bool demo = false;
    common::FleetChoice fleet = {}; ///< other machines to show
    common::NodeChoice node = {};   ///< of these the one, where it is one alone: no wall
    bool onTop = false;
    bool onDesktop = false;
    bool frameless = false;
    bool tray = false;
    bool warnMemory = false; ///< say so once when memory gets short
    bool hidden = false;     ///< the ring in the tray alone, until somebody asks for the window
    std::string
        anchor;      ///< where on a Wayland screen: "top-right", "center" and the like; or empty: top-right
    int margin = 24; ///< from those edges, in pixels
    std::optional<bool> autostart; ///< write or remove the entry, and end
};

/// Absent: whatever the desktop has.
[[nodiscard]] std::optional<platform::Appearance> fixedAppearance(const Options& options);

/// Reads a command line. Instead of options the exit status of a program that is done: 0 after --help and
/// --version, 2 after a line on standard error about an option that cannot be used.
[[nodiscard]] std::variant<Options, int> readOptions(int argc, const char* const* argv);

/// What a window was asked for, as words of a command line and back: for an entry that starts it again, and
/// for the window that runs already. What is not for a window is left out; words of another kind are absent.
[[nodiscard]] std::vector<std::string> windowWords(const Options& options);
[[nodiscard]] std::optional<Options> optionsFromWords(const std::vector<std::string>& words);

} // namespace vantor::hosts::widget
