// SPDX-License-Identifier: MIT
#include "hosts/widget/Options.hpp"

#include "hosts/common/FleetOptions.hpp"
#include "hosts/common/HelpFormatter.hpp"
#include "hosts/common/OptionChecks.hpp"
#include "hosts/qt/PictureFile.hpp"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <utility>

namespace vantor::hosts::widget {

namespace {

constexpr int greatestMargin = 10'000; // pixels

constexpr std::array anchors{"top-left", "top",         "top-right", "left",        "center",
                             "right",    "bottom-left", "bottom",    "bottom-right"};

constexpr std::array appearances{std::pair(AppearanceChoice::automatic, std::string_view("auto")),
                                 std::pair(AppearanceChoice::light, std::string_view("light")),
                                 std::pair(AppearanceChoice::dark, std::string_view("dark"))};

/// What is on or off, and whether a window can be told later.
struct Flag {
    const char* name;
    bool Options::*value;
    const char* help;
    const char* excludes;
};
constexpr std::array windowFlags{
    Flag{"--frameless", &Options::frameless, "A card without a window frame; drag it by its ground", nullptr},
    Flag{"--on-top", &Options::onTop, "Keep the window above others", nullptr},
    Flag{"--on-desktop", &Options::onDesktop,
         "Keep it below others, without a frame, as a part of the desktop", "--on-top"},
    Flag{"--tray", &Options::tray, "Show a ring in the tray as well, once there is one", nullptr},
    Flag{"--hidden", &Options::hidden, "Start with the ring in the tray alone", nullptr},
    Flag{"--warn-memory", &Options::warnMemory, "Say so once when memory gets short", nullptr}};

std::string checkPicture(const std::string& name) {
    return qt::isPicture(name, ".png") || qt::isPicture(name, ".svg")
               ? std::string()
               : "must be a file name ending in .png or .svg";
}

std::string checkMargin(const std::string& text) {
    const std::optional<double> margin = common::plainNumber(text);
    return margin && *margin >= 0 && *margin <= greatestMargin ? std::string() : "must be a number of pixels";
}

/// A command line that is being read.
class Reader {
public:
    Reader() {
        m_app.formatter(std::make_shared<common::HelpFormatter>());
        m_app.footer("A right click on the card, the Menu key or Shift+F10 opens its menu.");
        addLooks();
        addPicture();
        addWindow();
        CLI::Option* demo = m_app.add_flag("--demo", m_options.demo, "Show a made-up machine")->group(others);
        m_fleet.addTo(m_app, machines, demo);
        m_app
            .add_option("--autostart", m_autostart,
                        "Start at login, with the other options given here, or no longer")
            ->check(common::oneOf({"on", "off"}))
            ->type_name("on|off")
            ->group(others);
        m_app.set_help_flag("-h,--help", "List the options, and end")->group(others);
        m_app
            .set_version_flag("--version", "vantor-widget " VANTOR_VERSION,
                              "Say which version this is, and end")
            ->group(others);
    }

    [[nodiscard]] CLI::App& app() { return m_app; }

    /// After a successful parse.
    [[nodiscard]] Options options() {
        if (!m_picture.empty()) {
            m_options.snapshot = m_picture;
        }
        if (m_compact || m_expanded) {
            m_options.expanded = m_expanded;
        }
        m_options.scale = common::plainNumber(m_scale).value_or(1);
        for (const auto& [choice, word] : appearances) {
            if (m_appearance == word) {
                m_options.appearance = choice;
            }
        }
        if (!m_autostart.empty()) {
            m_options.autostart = m_autostart == "on";
        }
        m_options.margin = static_cast<int>(common::plainNumber(m_margin).value_or(m_options.margin));
        m_options.fleet = m_fleet.choice();
        if (const common::FleetChoice& fleet = m_options.fleet; !fleet.isWall()) {
            m_options.node = {fleet.nodes.empty() ? std::string() : fleet.nodes.front(), fleet.machine,
                              fleet.every, fleet};
        }
        m_options.tray = m_options.tray || m_options.hidden;
        return m_options;
    }

private:
    static constexpr const char* looks = "How it looks";
    static constexpr const char* pictures = "A picture of it";
    static constexpr const char* windows = "Its window";
    static constexpr const char* machines = "Other machines";
    static constexpr const char* others = "Others";

    void addLooks() {
        CLI::Option* small = m_app.add_flag("--compact", m_compact, "Show the rings only")->group(looks);
        m_app.add_flag("--expanded", m_expanded, "Show the rings and all figures")
            ->excludes(small)
            ->group(looks);
        m_app.add_option("--appearance", m_appearance, "Light or dark colours; auto follows the desktop")
            ->check(common::oneOf({appearances[0].second, appearances[1].second, appearances[2].second}))
            ->type_name("auto|light|dark")
            ->group(looks);
    }
    void addPicture() {
        CLI::Option* snapshot = m_app
                                    .add_option("--snapshot", m_picture,
                                                "Draw it into FILE (.png or .svg) and end; needs no display")
                                    ->check(CLI::Validator(checkPicture, ""))
                                    ->type_name("FILE")
                                    ->group(pictures);
        m_app.add_option("--scale", m_scale, "Pixels per point in that file, 0.5 to 8; 1 unless given")
            ->check(CLI::Validator(common::scaleProblem, ""))
            ->type_name("N")
            ->needs(snapshot)
            ->group(pictures);
    }
    void addWindow() {
        for (const Flag& flag : windowFlags) {
            CLI::Option* option = m_app.add_flag(flag.name, m_options.*flag.value, flag.help)->group(windows);
            if (flag.excludes != nullptr) {
                option->excludes(m_app.get_option(flag.excludes));
            }
        }
        m_app
            .add_option("--anchor", m_options.anchor,
                        "Where such a card is under Wayland: top-right, left, center ...")
            ->check(common::oneOf({anchors.begin(), anchors.end()}))
            ->type_name("EDGES")
            ->group(windows);
        m_app.add_option("--margin", m_margin, "And how many pixels from there; 24 unless given")
            ->check(CLI::Validator(checkMargin, ""))
            ->type_name("N")
            ->group(windows);
    }

    Options m_options;
    std::string m_picture;
    std::string m_scale = "1";
    std::string m_margin;
    std::string m_appearance;
    std::string m_autostart;
    bool m_compact = false;
    bool m_expanded = false;
    common::FleetOptions m_fleet;
    CLI::App m_app{"Shows this machine's memory, storage, processor and network on a card.", "vantor-widget"};
};

} // namespace

std::optional<platform::Appearance> fixedAppearance(const Options& options) {
    switch (options.appearance.value_or(AppearanceChoice::automatic)) {
    case AppearanceChoice::light:
        return platform::Appearance::light;
    case AppearanceChoice::dark:
        return platform::Appearance::dark;
    case AppearanceChoice::automatic:
        break;
    }
    return std::nullopt;
}

std::variant<Options, int> readOptions(int argc, const char* const* argv) {
    Reader reader;
    try {
        reader.app().parse(argc, argv);
        return reader.options();
    } catch (const CLI::ParseError& problem) {
        return common::endAfter(problem, reader.app());
    }
}

std::vector<std::string> windowWords(const Options& options) {
    std::vector<std::string> words;
    if (options.expanded) {
        words.emplace_back(*options.expanded ? "--expanded" : "--compact");
    }
    for (const auto& [choice, word] : appearances) {
        if (options.appearance == choice) {
            words.insert(words.end(), {"--appearance", std::string(word)});
        }
    }
    for (const Flag& flag : windowFlags) {
        if (options.*flag.value) {
            words.emplace_back(flag.name);
        }
    }
    if (!options.anchor.empty()) {
        words.insert(words.end(), {"--anchor", options.anchor});
    }
    if (options.margin != Options{}.margin) {
        words.insert(words.end(), {"--margin", std::to_string(options.margin)});
    }
    if (options.demo) {
        words.emplace_back("--demo");
    }
    const std::vector<std::string> fleet = common::FleetOptions::words(options.fleet);
    words.insert(words.end(), fleet.begin(), fleet.end());
    return words;
}

std::optional<Options> optionsFromWords(const std::vector<std::string>& words) {
    Reader reader;
    try {
        reader.app().parse(
            std::vector<std::string>(words.rbegin(), words.rend())); // it takes them from the end
        return reader.options();
    } catch (const CLI::ParseError&) {
        return std::nullopt;
    }
}

} // namespace vantor::hosts::widget
