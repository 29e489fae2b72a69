// SPDX-License-Identifier: MIT
#include "hosts/common/Complaints.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/common/Signals.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/qt/SingleInstance.hpp"
#include "hosts/qt/ToolkitSetup.hpp"
#include "hosts/widget/Autostart.hpp"
#include "hosts/widget/Options.hpp"
#include "hosts/widget/Snapshot.hpp"
#include "hosts/widget/WidgetWindow.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/core/StandardOutput.hpp"

#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <iostream>

namespace {

using namespace vantor;
using namespace vantor::hosts::widget;

/// A few threads that mostly sleep: one arena for all, and freed memory goes back early.
void keepMemorySmall() {
    ::mallopt(M_ARENA_MAX, 1);
    ::mallopt(M_TRIM_THRESHOLD, 128 * 1024);
    ::mallopt(M_MMAP_THRESHOLD, 128 * 1024);
}

int changeAutostart(bool on) {
    if (const std::optional<std::string> problem = setAutostart(on)) {
        std::cerr << "vantor-widget: " << vantor::platform::printableText(*problem) << '\n';
        return 1;
    }
    return 0;
}

int showWindow(const Options& options) {
    hosts::qt::SingleInstance instance("vantor-widget");
    if (instance.isSecond()) {
        return 0;
    }
    const hosts::common::Signals ending({SIGTERM, SIGINT, SIGHUP},
                                        hosts::common::Signals::Again::actsByDefault);
    hosts::qt::quitWhenReadable(ending.number());
    WidgetWindow window(options);
    instance.setRaiseHandler([&window] { window.comeForward(); });
    window.show();
    return QApplication::exec();
}

int run(const Options& options, int argc, char** argv) {
    // Never destroyed, not even with the static objects: workers may be sampling when the window closes.
    [[maybe_unused]] static const auto& machine = *new hosts::common::HostMachine(options.demo);
    hosts::common::Complaints complaints("vantor-widget");
    complaints.tellStore();
    if (options.snapshot) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qunsetenv("QT_SCALE_FACTOR"); // --scale alone decides
    }
    hosts::qt::keepDriversOut();
    QApplication::setStyle(QStringLiteral("fusion")); // the card paints itself: no theme's style is loaded
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vantor-widget"));
    QApplication::setDesktopFileName(QStringLiteral("vantor-widget"));
    QApplication::setLayoutDirection(hosts::qt::isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    if (!options.snapshot) {
        return showWindow(options);
    }
    const int status = writeSnapshot(options);
    complaints.tell(hosts::common::currentFailures());
    return status;
}

} // namespace

int main(int argc, char** argv) {
    hosts::common::holdClosedStreams();
    keepMemorySmall();
    std::signal(SIGPIPE, SIG_IGN); // whoever read the log may go away
    platform::setStandardOutput(hosts::common::unhurriedStream(STDOUT_FILENO));
    std::setlocale(LC_ALL, "");
    const std::variant<Options, int> read = readOptions(argc, argv);
    if (const int* status = std::get_if<int>(&read)) {
        return *status;
    }
    const auto& options = std::get<Options>(read);
    if (options.autostart) {
        return changeAutostart(*options.autostart);
    }
    if (!options.snapshot && !hosts::qt::hasDisplay()) {
        std::cerr << "vantor-widget: there is no display; --snapshot draws the widget into a file\n";
        return 1;
    }
    hosts::qt::quietRemarks("vantor-widget");
    return run(options, argc, argv);
}
