// SPDX-License-Identifier: MIT
#include "hosts/common/Complaints.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/common/Signals.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/qt/SessionBus.hpp"
#include "hosts/qt/SingleInstance.hpp"
#include "hosts/qt/ToolkitSetup.hpp"
#include "hosts/widget/AppIcon.hpp"
#include "hosts/widget/Autostart.hpp"
#include "hosts/widget/Options.hpp"
#include "hosts/widget/SilentFolders.hpp"
#include "hosts/widget/Snapshot.hpp"
#include "hosts/widget/WidgetWindow.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/core/StandardOutput.hpp"

#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <QTimer>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

using namespace vantor;
using namespace vantor::hosts::widget;

/// A few threads that mostly sleep: one arena for all, and freed memory goes back early.
void keepMemorySmall() {
    ::mallopt(M_ARENA_MAX, 1);
    ::mallopt(M_TRIM_THRESHOLD, 128 * 1024);
    ::mallopt(M_MMAP_THRESHOLD, 128 * 1024);
}

void say(const std::string& text) {
    std::cerr << "vantor-widget: " << platform::printableText(text, 4096) << std::endl;
}

int changeAutostart(const Options& options) {
    if (const std::optional<std::string> problem = setAutostart(*options.autostart, options)) {
        say(*problem);
        return 1;
    }
    return 0;
}

int showWindow(const Options& options) {
    using hosts::qt::SingleInstance;
    // A made-up machine is another program's window.
    SingleInstance instance(options.demo ? "vantor-widget-demo" : "vantor-widget", windowWords(options));
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
    WidgetWindow window(options);
    instance.setCallHandler([&window](const SingleInstance::Words& words) {
        window.heed(optionsFromWords(words).value_or(Options{}));
    });
    window.start();
    QTimer::singleShot(0, &window, [] { QApplication::setWindowIcon(appIcon()); }); // after the first picture
    return QApplication::exec();
}

/// What the toolkit and its libraries look up in the environment, before there are other threads to look.
void setEnvironment(const Options& options) {
    if (options.snapshot) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qunsetenv("QT_SCALE_FACTOR"); // --scale alone decides
        hosts::qt::refuseSessionBus();
    } else {
        hosts::qt::settleSessionBus();
        hosts::qt::makeRoomForToken();
    }
    hosts::qt::keepDriversOut();
}

int run(const Options& options, int argc, char** argv) {
    if (const std::optional<std::string> silent = settleFolders()) {
        say(*silent + hosts::common::noAnswer);
        return 1;
    }
    setEnvironment(options);
    // Never destroyed, not even with the static objects: workers may be sampling when the window closes.
    [[maybe_unused]] static const auto& machine = *new hosts::common::HostMachine(options.demo);
    hosts::common::Complaints complaints("vantor-widget");
    complaints.tellStore();
    QApplication::setStyle(QStringLiteral("fusion")); // the card paints itself: no theme's style is loaded
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vantor-widget"));
    QApplication::setApplicationDisplayName(QStringLiteral("Vantor"));
    QApplication::setDesktopFileName(QStringLiteral("vantor-widget"));
    QApplication::setLayoutDirection(hosts::qt::isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const bool canWrite = hosts::qt::hasFonts();
    if (!canWrite) {
        say("there is no font to write with: each letter is drawn as a box");
    }
    if (!options.snapshot) {
        return showWindow(options);
    }
    const int status = writeSnapshot(options);
    complaints.tell(hosts::common::currentFailures());
    return canWrite ? status : 1;
}

} // namespace

int main(int argc, char** argv) {
    hosts::common::holdClosedStreams();
    hosts::common::letWritesFail();
    keepMemorySmall();
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
    hosts::qt::quietRemarks("vantor-widget");
    return run(options, argc, argv);
}
