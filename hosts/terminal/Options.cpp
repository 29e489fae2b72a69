// SPDX-License-Identifier: MIT
#include "hosts/terminal/Options.hpp"

#include "hosts/common/FleetOptions.hpp"
#include "hosts/terminal/StandardOutput.hpp"
#include "platform/core/PrintableText.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor::hosts::terminal {

namespace {

using platform::Appearance;

constexpr int badUsage = 2;

CLI::Validator oneOf(const std::vector<std::string>& words) {
    return {[words](const std::string& word) {
                std::string known;
                for (const std::string& other : words) {
                    known += (known.empty() ? "" : ", ") + other;
                }
                return std::ranges::find(words, word) != words.end() ? std::string()
                                                                     : "\"" + word + "\" is none of " + known;
            },
            ""};
}

/// A choice among named values, offered in the order in which they are given.
template<class Value>
void choice(CLI::App& app, const std::string& name, std::optional<Value>& target,
            const std::vector<std::pair<std::string, Value>>& values, const std::string& help) {
    std::vector<std::string> words;
    std::string shown;
    for (const auto& [word, value] : values) {
        words.push_back(word);
        shown += (shown.empty() ? "" : "|") + word;
    }
    app.add_option_function<std::string>(
           name,
           [&target, values](const std::string& word) {
               target = std::ranges::find(values, word, &std::pair<std::string, Value>::first)->second;
           },
           help)
        ->check(oneOf(words))
        ->type_name(shown);
}

/// A number of seconds above zero, in the C locale whatever the user's.
double seconds(const char* option, const std::string& text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value) || value <= 0) {
        throw CLI::ValidationError(option, "\"" + text + "\" is no number of seconds above zero");
    }
    return value;
}

void addOptions(CLI::App& app, Options& options, std::optional<ColorChoice>& color,
                std::optional<Appearance>& appearance, bool& expanded, common::FleetOptions& fleet) {
    app.add_flag("--once", options.once, "Print one report, as soon as rates exist, and end");
    app.add_option_function<std::vector<std::string>>(
           "--watch",
           [&options](const std::vector<std::string>& values) {
               options.watch = true;
               if (!values.empty() && !values.front().empty()) {
                   options.watchSeconds = seconds("--watch", values.front());
               }
           },
           "Print a report every SECONDS (those of --interval where none are given)")
        ->expected(0, 1)
        ->type_name("SECONDS");
    app.add_option_function<std::string>(
           "--interval",
           [&options](const std::string& value) { options.interval = seconds("--interval", value); },
           "Refresh every SECONDS instead of what the preferences say")
        ->type_name("SECONDS");
    app.add_option("--output", options.output, "Write each report to FILE, replacing it as a whole")
        ->type_name("FILE");
    choice<Format>(app, "--format", options.format,
                   {{"text", Format::text},
                    {"json", Format::json},
                    {"waybar", Format::waybar},
                    {"prometheus", Format::prometheus}},
                   "How a report is written");
    std::vector<std::pair<std::string, platform::Source>> fields;
    fields.reserve(sections.size());
    for (const Section& section : sections) {
        fields.emplace_back(section.mark, section.source);
    }
    choice<platform::Source>(app, "--field", options.field, fields,
                             "Report one section only (text and waybar)");
    auto* const demo =
        app.add_flag("--demo", options.demo, "Show a made-up machine whose figures drift up and down");
    fleet.addTo(app, "Other machines", demo);
    app.add_flag("--compact", options.compact, "Start with the rings alone")
        ->excludes(app.add_flag("--expanded", expanded, "Start with rings and figures (the default)"));
    app.add_flag("--no-mouse", options.noMouse, "Leave the mouse to the terminal, to select text with");
    choice<ColorChoice>(app, "--color", color,
                        {{"auto", ColorChoice::automatic},
                         {"always", ColorChoice::always},
                         {"never", ColorChoice::none},
                         {"8", ColorChoice::eight},
                         {"16", ColorChoice::sixteen},
                         {"256", ColorChoice::palette},
                         {"24bit", ColorChoice::direct}},
                        "How many colours to use");
    app.add_option_function<std::string>(
           "--appearance",
           [&appearance](const std::string& word) {
               if (word != "auto") {
                   appearance = word == "light" ? Appearance::light : Appearance::dark;
               }
           },
           "The terminal's background, where it does not tell")
        ->check(oneOf({"auto", "light", "dark"}))
        ->type_name("auto|light|dark");
    app.add_option("--log", options.log, "Append the log to FILE instead of standard error")
        ->type_name("FILE");
}

void check(const Options& options) {
    if (options.once && options.watch) {
        throw CLI::ValidationError("--once", "does not go with --watch");
    }
    if (options.once && options.interval) {
        throw CLI::ValidationError("--interval", "does not go with --once");
    }
    if (options.field && options.fleet.isWall()) {
        throw CLI::ValidationError("--field", "goes with one machine");
    }
    const bool knowsField =
        options.format.value_or(Format::text) == Format::text || options.format == Format::waybar;
    if (options.field && !knowsField) {
        throw CLI::ValidationError("--field", "goes with the formats text and waybar");
    }
}

} // namespace

ParsedOptions parseOptions(int count, const char* const* arguments) {
    ParsedOptions parsed;
    CLI::App app(
        "Shows a machine's memory, storage, processor and network in the terminal, or reports them to "
        "scripts.",
        "vantor-term");
    std::optional<ColorChoice> color;
    bool expanded = false;
    common::FleetOptions fleet;
    addOptions(app, parsed.options, color, parsed.options.appearance, expanded, fleet);
    choice<Glyphs>(app, "--glyphs", parsed.options.glyphs,
                   {{"solid", Glyphs::solid},
                    {"braille", Glyphs::braille},
                    {"sextant", Glyphs::sextant},
                    {"octant", Glyphs::octant},
                    {"block", Glyphs::block},
                    {"ascii", Glyphs::ascii}},
                   "The characters to draw with, where the terminal has others than it tells");
    app.set_version_flag("--version", "vantor-term " VANTOR_VERSION);
    try {
        app.parse(count, arguments);
        parsed.options.fleet = fleet.choice();
        check(parsed.options);
        if (const common::FleetChoice& chosen = parsed.options.fleet; !chosen.isWall()) {
            parsed.options.node = {chosen.nodes.empty() ? std::string() : chosen.nodes.front(),
                                   chosen.machine, chosen.every, chosen};
        }
        parsed.options.color = color.value_or(ColorChoice::automatic);
    } catch (const CLI::Success& wish) { // --help and --version
        std::ostringstream text;
        parsed.exitStatus = app.exit(wish, text);
        if (writeOut(text.str()) == Output::failed) {
            parsed.exitStatus = 1;
        }
    } catch (const CLI::ParseError& mistake) {
        std::fprintf(stderr, "vantor-term: %s\nvantor-term --help tells what there is.\n",
                     platform::printableText(mistake.what()).c_str());
        parsed.exitStatus = badUsage;
    }
    return parsed;
}

} // namespace vantor::hosts::terminal
