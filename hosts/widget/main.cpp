// SPDX-License-Identifier: MIT
#include "hosts/common/Complaints.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/FleetOptions.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/common/HostViewer.hpp"
#include "hosts/common/RemoteNode.hpp"
#include "hosts/common/Signals.hpp"
#include "hosts/common/SilentFolders.hpp"
#include "hosts/common/SmallMemory.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "hosts/qt/AppIcon.hpp"
#include "hosts/qt/SingleInstance.hpp"
#include "hosts/qt/ToolkitSetup.hpp"
#include "hosts/widget/Autostart.hpp"
#include "hosts/widget/Options.hpp"
#include "hosts/widget/Snapshot.hpp"
#include "hosts/widget/WallWindow.hpp"
#include "hosts/widget/WidgetWindow.hpp"
#include "platform/core/StandardOutput.hpp"

#include <unistd.h>

#include <QApplication>
#include <QTimer>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

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
    SingleInstance instance(windowName(options), windowWords(options));
    if (instance.role() == SingleInstance::Role::unanswered) {
        say("the one that runs already (process " + std::to_string(instance.other()) + ") does not answer");
        return 1;
    }
    if (instance.role() == SingleInstance::Role::second) {
        return 0;
    }
    const hosts::common::Signals ending({SIGTERM, SIGINT, SIGHUP},
                                        hosts::common::Signals::Again::actsByDefault);
    hosts::qt::quitWhenReadable(ending.number());
    const std::unique_ptr<Window> window = make();
    instance.setCallHandler([&window](const SingleInstance::Words& words) {
        window->heed(optionsFromWords(words).value_or(Options{}));
    });
    window->start();
    QTimer::singleShot(0, window.get(),
                       [] { QApplication::setWindowIcon(hosts::qt::appIcon()); }); // after the first picture
    return QApplication::exec();
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

/// The toolkit's application, and whether there is a font to write with.
std::unique_ptr<QApplication> makeApplication(int& argc, char** argv, bool& canWrite) {
    QApplication::setStyle(QStringLiteral("fusion")); // the card paints itself: no theme's style is loaded
    auto application = std::make_unique<QApplication>(argc, argv);
    hosts::qt::nameApplication("vantor-widget");
    canWrite = hosts::qt::hasFonts();
    if (!canWrite) {
        say("there is no font to write with: each letter is drawn as a box");
    }
    return application;
}

int runWall(const Options& options, int argc, char** argv) {
    [[maybe_unused]] static const auto& viewer = *new hosts::common::HostViewer(options.fleet.demo > 0);
    // Never destroyed: workers may be sampling an opened machine when the window closes.
    static auto& fleet = *new hosts::common::FleetHost(options.fleet);
    if (!fleet.open("vantor-widget")) {
        return 1;
    }
    bool canWrite = false;
    const auto application = makeApplication(argc, argv, canWrite);
    if (!options.snapshot) {
        return showWindow<WallWindow>(options, [&] { return std::make_unique<WallWindow>(options, fleet); });
    }
    const int status = writeWall(options, fleet);
    return canWrite ? status : 1;
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
    // Never destroyed, not even with the static objects: workers may be sampling when the window closes.
    hosts::common::RemoteNode* node = nullptr;
    if (options.node.isOther()) {
        node = new hosts::common::RemoteNode(options.node);
        // A window may be started before the network is there.
        if (!node->await("vantor-widget", !options.snapshot)) {
            return 1;
        }
    }
    [[maybe_unused]] static const auto& machine = node != nullptr
                                                      ? *new hosts::common::HostMachine(node->machine())
                                                      : *new hosts::common::HostMachine(options.demo);
    hosts::common::Complaints complaints("vantor-widget");
    complaints.tellStore();
    bool canWrite = false;
    const auto application = makeApplication(argc, argv, canWrite);
    if (!options.snapshot) {
        return showMachine(options, node);
    }
    const int status = writeSnapshot(options, node);
    complaints.tell(hosts::common::currentFailures());
    return canWrite ? status : 1;
}

} // namespace

int main(int argc, char** argv) {
    hosts::common::holdClosedStreams();
    hosts::common::letNobodyWaitForErrors();
    hosts::common::letWritesFail();
    hosts::common::keepMemorySmall();
    platform::setStandardOutput(hosts::common::unhurriedStream(STDOUT_FILENO));
    std::setlocale(LC_ALL, "");
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
    const int status = run(options, argc, argv);
    std::fflush(nullptr);
    // Not through the destructors of static objects, ours and the libraries': a worker may still be sampling.
    std::_Exit(status);
}
