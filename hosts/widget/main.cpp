// SPDX-License-Identifier: MIT
#include "hosts/common/Complaints.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/FleetOptions.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/common/HostViewer.hpp"
#include "hosts/common/RemoteNode.hpp"
#include "hosts/common/SilentFolders.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "hosts/qt/ToolkitSetup.hpp"
#include "hosts/widget/Autostart.hpp"
#include "hosts/widget/Options.hpp"
#include "hosts/widget/Snapshot.hpp"
#include "hosts/widget/WallWindow.hpp"
#include "hosts/widget/WidgetWindow.hpp"
#include "hosts/window/WindowProgram.hpp"
#include "platform/core/MakeForEver.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace {

using namespace vantor;
using namespace vantor::hosts::widget;

void say(const std::string& text) {
    hosts::common::complain("vantor-widget", text);
}

int changeAutostart(const Options& options) {
    if (const std::optional<std::string> problem = setAutostart(*options.autostart, options)) {
        say(*problem);
        return 1;
    }
    return 0;
}

/// A made-up machine is another program's window, and so is each other machine.
std::string windowName(const Options& options) {
    std::string others;
    for (const std::string& word : hosts::common::FleetOptions::words(options.fleet)) {
        others += word + '\n';
    }
    return std::string("vantor-widget") + (options.demo ? "-demo" : "") +
           (others.empty() ? others : "-" + std::to_string(std::hash<std::string>()(others)));
}

/// A window that heeds later starts of the program, shown until the program is to end.
template<class Window>
int showWindow(const Options& options, const std::function<std::unique_ptr<Window>()>& make) {
    using hosts::qt::SingleInstance;
    return hosts::window::showWindow(
        "vantor-widget", windowName(options), windowWords(options), [&make](SingleInstance& instance) {
            std::unique_ptr<Window> window = make();
            instance.setCallHandler([shown = window.get()](const SingleInstance::Words& words) {
                shown->heed(optionsFromWords(words).value_or(Options{}));
            });
            window->start();
            return window;
        });
}

int showMachine(const Options& options, const hosts::common::RemoteNode* node) {
    return showWindow<WidgetWindow>(options, [&] {
        auto window = std::make_unique<WidgetWindow>(options);
        if (node != nullptr) {
            window->follow(*node);
        }
        return window;
    });
}

int runWall(const Options& options, int argc, char** argv) {
    // Workers may be sampling an opened machine when the window closes.
    platform::makeForEver<hosts::common::HostViewer>(options.fleet.demo > 0);
    auto& fleet = platform::makeForEver<hosts::common::FleetHost>(options.fleet);
    if (!fleet.open("vantor-widget")) {
        return 1;
    }
    const hosts::window::Application application("vantor-widget", argc, argv);
    if (!options.snapshot) {
        return showWindow<WallWindow>(options, [&] { return std::make_unique<WallWindow>(options, fleet); });
    }
    const int status = writeWall(options, fleet);
    return application.canWrite() ? status : 1;
}

int run(const Options& options, int argc, char** argv) {
    if (const std::optional<std::string> silent = hosts::common::settleFolders()) {
        say(*silent + hosts::common::noAnswer);
        return 1;
    }
    hosts::qt::setEnvironment(options.snapshot.has_value());
    if (options.fleet.isWall()) {
        return runWall(options, argc, argv);
    }
    // Workers may be sampling when the window closes.
    hosts::common::RemoteNode* node = nullptr;
    if (options.node.isOther()) {
        node = &platform::makeForEver<hosts::common::RemoteNode>(options.node);
        // A window may be started before the network is there.
        if (!node->await("vantor-widget", !options.snapshot)) {
            return 1;
        }
    }
    if (node != nullptr) {
        platform::makeForEver<hosts::common::HostMachine>(node->machine());
    } else {
        platform::makeForEver<hosts::common::HostMachine>(options.demo);
    }
    hosts::common::Complaints complaints("vantor-widget");
    complaints.tellStore();
    const hosts::window::Application application("vantor-widget", argc, argv);
    if (!options.snapshot) {
        return showMachine(options, node);
    }
    const int status = writeSnapshot(options, node);
    complaints.tell(hosts::common::currentFailures());
    return application.canWrite() ? status : 1;
}

} // namespace

int main(int argc, char** argv) {
    hosts::window::settleProcess();
    const std::variant<Options, int> read = readOptions(argc, argv);
    if (const int* status = std::get_if<int>(&read)) {
        return *status;
    }
    const auto& options = std::get<Options>(read);
    if (options.autostart) {
        return changeAutostart(options);
    }
    if (!options.snapshot && !hosts::qt::hasDisplay()) {
        say("there is no display; --snapshot draws the widget into a file");
        return 1;
    }
    hosts::qt::quietRemarks(say);
    hosts::window::endProcess(run(options, argc, argv));
}
