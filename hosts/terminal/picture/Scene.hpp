// SPDX-License-Identifier: MIT
#pragma once

#include "charts/ArcChartView.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantor::hosts::terminal {

/// What the user can ask for with a key or a click.
enum class Action : std::uint8_t { refresh, cleanRam, openApp, showCpuChart, changeMode, quit };

/// The texts and charts to show, read from the view tree.
struct Scene {
    struct Row {
        std::string caption;
        std::string figure; ///< empty until the first report
    };
    struct Section {
        std::string name;
        std::optional<ArcChartView> chart; ///< absent for the network
        std::vector<Row> rows;
        Action action = Action::refresh; ///< of a click on the chart
    };
    struct Key {
        char key = 0;
        std::string text;
        std::string shortText;
        Action action = Action::refresh;
    };

    static constexpr std::size_t charts = 3;
    std::array<Section, charts> sections; ///< memory, storage, processor
    Section network;                      ///< received, then sent
    std::vector<Key> keys;
    std::string notice;  ///< something to tell, in place of the keys
    std::string warning; ///< what cannot be read at present, above the keys where there is room
    bool isExpanded = true;
};

} // namespace vantor::hosts::terminal
