// SPDX-License-Identifier: MIT
#include "hosts/app/Options.hpp"

#include "hosts/common/HelpFormatter.hpp"
#include "hosts/common/OptionChecks.hpp"
#include "hosts/qt/PictureFile.hpp"
#include "settings/DeepLink.hpp"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <utility>

namespace vantor::hosts::app {

namespace {

constexpr std::array<std::pair<PageKind, std::string_view>, pageCount> pages{
    {{PageKind::memory, "ram"},
     {PageKind::storage, "storage"},
     {PageKind::processor, "processor"},
     {PageKind::settings, "settings"}}};
constexpr std::array<std::string_view, 3> appearances{"auto", "light", "dark"};
constexpr std::string_view freeMemory = "--free-memory"; ///< among windows: no option of the command line

std::optional<PageKind> pageNamed(std::string_view word) {
    const auto found = std::ranges::find(pages, word, &std::pair<PageKind, std::string_view>::second);
    return found != pages.end() ? std::optional(found->first) : std::nullopt;
}

/// What the parser fills in.
struct Read {
    std::string page;
    std::string link;
    std::vector<std::string> snapshot;
    std::string appearance;
    std::string scale = "1";
    bool demo = false;
};

std::string pageProblem(const std::string& word) {
    return pageNamed(word) ? std::string() : "\"" + word + "\" is none of ram, storage, processor, settings";
}

/// The first value is a page, the second a file.
std::string pictureProblem(const std::string& word) {
    return pageNamed(word) || qt::isPicture(word, ".png") || qt::isPicture(word, ".svg")
               ? std::string()
               : "takes a page (ram, storage, processor, settings) and a file name ending in .png or .svg";
}

void addOptions(CLI::App& app, Read& read) {
    constexpr const char* pictures = "A picture of it";
    constexpr const char* others = "Others";
    app.formatter(std::make_shared<common::HelpFormatter>());
    app.set_help_flag();
    app.add_option("LINK", read.link, "vantor://action?showRam and the like: the page it stands for")
        ->type_name("");
    app.add_option("--page", read.page, "Show this page: ram, storage, processor or settings")
        ->check(CLI::Validator(pageProblem, ""))
        ->type_name("PAGE")
        ->group("The page");
    app.add_option("--appearance", read.appearance, "Light or dark colours; auto follows the desktop")
        ->check(common::oneOf({appearances.begin(), appearances.end()}))
        ->type_name("auto|light|dark")
        ->group("How it looks");
    CLI::Option* const snapshot =
        app.add_option("--snapshot", read.snapshot,
                       "Draw a page into FILE (.png or .svg) and end; needs no display")
            ->expected(2)
            ->check(CLI::Validator(pictureProblem, ""))
            ->type_name("PAGE FILE")
            ->group(pictures);
    app.add_option("--scale", read.scale, "Pixels per point in that file, 0.5 to 8; 1 unless given")
        ->check(CLI::Validator(common::scaleProblem, ""))
        ->type_name("N")
        ->needs(snapshot)
        ->group(pictures);
    app.add_flag("--demo", read.demo, "Show a made-up machine")->group(others);
    app.set_help_flag("-h,--help", "List the options, and end")->group(others);
    app.set_version_flag("--version", "vantor-app " VANTOR_VERSION, "Say which version this is, and end")
        ->group(others);
}

PageKind pageOf(DeepLink::Page page) {
    return page == DeepLink::Page::storage     ? PageKind::storage
           : page == DeepLink::Page::processor ? PageKind::processor
                                               : PageKind::memory;
}

Options optionsFrom(const Read& read) {
    Options options;
    options.demo = read.demo;
    options.scale = common::plainNumber(read.scale).value_or(1);
    options.page = pageNamed(read.page);
    if (!read.link.empty()) {
        const DeepLink::Target target = DeepLink::targetOf(read.link);
        options.page = pageOf(target.page);
        options.cleansRam = target.cleansRam;
    }
    if (read.appearance == "light" || read.appearance == "dark") {
        options.appearance =
            read.appearance == "dark" ? platform::Appearance::dark : platform::Appearance::light;
    }
    if (read.snapshot.size() == 2) {
        options.page = pageNamed(read.snapshot.front());
        options.snapshot = read.snapshot.back();
    }
    return options;
}

} // namespace

std::variant<Options, int> readOptions(int argc, const char* const* argv) {
    CLI::App app("Shows what Vantor's rings are made of, and sets what the widget goes by.", "vantor-app");
    Read read;
    addOptions(app, read);
    try {
        app.parse(argc, argv);
        if (!read.snapshot.empty() &&
            (!pageNamed(read.snapshot.front()) || pageNamed(read.snapshot.back()))) {
            throw CLI::ValidationError("--snapshot", pictureProblem(""));
        }
    } catch (const CLI::ParseError& problem) {
        return common::endAfter(problem, app);
    }
    return optionsFrom(read);
}

std::vector<std::string> windowWords(const Options& options) {
    std::vector<std::string> words;
    for (const auto& [page, word] : pages) {
        if (options.page == page) {
            words.insert(words.end(), {"--page", std::string(word)});
        }
    }
    if (options.cleansRam) {
        words.emplace_back(freeMemory);
    }
    return words;
}

Options optionsFromWords(const std::vector<std::string>& words) {
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--page" && i + 1 < words.size()) {
            options.page = pageNamed(words[i + 1]);
        } else if (words[i] == freeMemory) {
            options.cleansRam = true;
        }
    }
    return options;
}

} // namespace vantor::hosts::app
