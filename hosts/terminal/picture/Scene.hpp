// SPDX-License-Identifier: MIT
#pragma once

#include "charts/ArcChartView.hpp"
#include "platform/machine/Source.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vantor::hosts::terminal {

/// What the user can ask for with a key or a click: what a section offers, or something of the host itself.
enum class HostAction : std::uint8_t { changeMode, goBack, quit };
using Action = std::variant<platform::Source, HostAction>;

/// The texts and charts to show, read from the view tree.
struct Scene {
    struct Row {
        std::string caption;
        std::string figure;         ///< empty where there is none
        std::string_view sign = {}; ///< a character in place of the caption
        std::string_view asciiSign = {};
    };
    struct Section {
        std::string name;
        std::string note; ///< what there is to add to the name, such as "of 16 GB"; empty: nothing
        std::optional<ArcChartView> chart;
        std::vector<Row> rows;
        std::optional<Action> action; ///< of a click on the chart
        bool isKnown = true; ///< false: its source has failed or has told nothing yet, so no figure counts
    };
    struct Key {
        char key = 0;
        std::string text;
        Action action;
        bool isQuiet = false;        ///< answers, but is not offered
        std::string_view label = {}; ///< of a key that is no letter

        [[nodiscard]] std::string_view shown() const {
            return label.empty() ? std::string_view(&key, 1) : label;
        }
    };

    std::string host;              ///< whose figures these are
    bool isElsewhere = false;      ///< not this machine's: then that goes before larger rings
    std::vector<Section> sections; ///< those with a ring, one column each
    std::vector<Section> lines;    ///< those without, one line each
    std::vector<Key> keys;         ///< the one that is needed most first, the one to leave last
    std::string notice;            ///< something to tell, in place of the keys
    std::string warning;           ///< what cannot be read at present, above the keys where there is room
    bool isExpanded = true;
    bool isPale = false; ///< the figures are the last ones of a machine that is silent
};

} // namespace vantor::hosts::terminal
