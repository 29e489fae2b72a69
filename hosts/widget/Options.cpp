// SPDX-License-Identifier: MIT
#include "hosts/widget/Options.hpp"

#include "platform/core/PrintableText.hpp"

#include <CLI/CLI.hpp>

#include <charconv>
#include <iostream>
#include <map>

namespace vantor::hosts::widget {

namespace {

constexpr double greatestScale = 8;

/// The toolkit's own conversions follow the locale, a command line does not.
std::optional<double> number(const std::string& text) {
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && last == end ? std::optional(value) : std::nullopt;
}

std::string checkScale(const std::string& text) {
    const std::optional<double> scale = number(text);
    return scale && *scale >= 0.5 && *scale <= greatestScale ? std::string()
                                                             : "must be a number from 0.5 to 8";
}

std::string checkPicture(const std::string& name) {
    return name.ends_with(".png") || name.ends_with(".svg") ? std::string()
                                                            : "must be a file name ending in .png or .svg";
}

void addWindowOptions(CLI::App& app, Options& options, std::string& autostart) {
    app.add_flag("--frameless", options.frameless, "A card without a window frame; drag it by its ground");
    CLI::Option* top = app.add_flag("--on-top", options.onTop, "Keep the window above others");
    app.add_flag("--on-desktop", options.onDesktop, "Keep the window below others, without a frame")
        ->excludes(top);
    app.add_flag("--tray", options.tray, "Show a ring in the tray, where there is one");
    app.add_option("--autostart", autostart, "Start at login from now on, or no longer; then end")
        ->check(CLI::IsMember({"on", "off"}))
        ->type_name("on|off");
}

} // namespace

std::variant<Options, int> readOptions(int argc, const char* const* argv) {
    Options options;
    CLI::App app("Shows this machine's memory, storage, processor and network.", "vantor-widget");
    app.set_version_flag("--version", "vantor-widget " VANTOR_VERSION);
    std::string picture;
    std::string scale = "1";
    std::string appearance = "auto";
    std::string autostart;
    bool compact = false;
    bool expanded = false;

    CLI::Option* snapshot =
        app.add_option("--snapshot", picture, "Draw the widget into a file and end; needs no display")
            ->check(checkPicture)
            ->type_name("FILE.png|FILE.svg");
    CLI::Option* small = app.add_flag("--compact", compact, "Show the rings only");
    app.add_flag("--expanded", expanded, "Show the rings and all figures")->excludes(small);
    app.add_option("--appearance", appearance, "Light or dark; auto follows the desktop")
        ->check(CLI::IsMember({"auto", "light", "dark"}))
        ->type_name("auto|light|dark");
    app.add_option("--scale", scale, "Pixels per point in the file, 0.5 to 8")
        ->check(checkScale)
        ->type_name("N")
        ->needs(snapshot);
    app.add_flag("--demo", options.demo, "Show a made-up machine");
    addWindowOptions(app, options, autostart);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& problem) {
        if (problem.get_exit_code() == 0) {
            return app.exit(problem) == 0 && std::cout.flush() ? 0 : 1;
        }
        std::cerr << "vantor-widget: " << platform::printableText(problem.what()) << '\n';
        return 2;
    }
    if (!picture.empty()) {
        options.snapshot = picture;
    }
    if (compact || expanded) {
        options.expanded = expanded;
    }
    options.scale = number(scale).value_or(1);
    options.appearance = appearance == "light"  ? AppearanceChoice::light
                         : appearance == "dark" ? AppearanceChoice::dark
                                                : AppearanceChoice::automatic;
    if (!autostart.empty()) {
        options.autostart = autostart == "on";
    }
    return options;
}

} // namespace vantor::hosts::widget
