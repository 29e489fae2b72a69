// SPDX-License-Identifier: MIT
#include "hosts/common/Complaints.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/qt/SingleInstance.hpp"
#include "hosts/qt/TerminationSignals.hpp"
#include "hosts/widget/Autostart.hpp"
#include "hosts/widget/Options.hpp"
#include "hosts/widget/Snapshot.hpp"
#include "hosts/widget/WidgetWindow.hpp"
#include "platform/core/PrintableText.hpp"

#include <malloc.h>

#include <QApplication>
#include <algorithm>
#include <array>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace {

using namespace vantor;
using namespace vantor::hosts::widget;

/// A few threads that mostly sleep: one arena for all, and freed memory goes back early.
void keepMemorySmall() {
    ::mallopt(M_ARENA_MAX, 1);
    ::mallopt(M_TRIM_THRESHOLD, 128 * 1024);
    ::mallopt(M_MMAP_THRESHOLD, 128 * 1024);
}

/// The card paints itself in memory: without these the toolkit loads a GL driver of thirty megabytes for
/// window frames that are never drawn.
void keepDriversOut() {
    for (const auto& [name, value] : {std::pair("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION", "none"),
                                      std::pair("QT_WAYLAND_DISABLE_WINDOWDECORATION", "1"),
                                      std::pair("QT_XCB_GL_INTEGRATION", "none")}) {
        if (!qEnvironmentVariableIsSet(name)) {
            qputenv(name, value);
        }
    }
}

/// The toolkit's own remarks are for its developers; whoever sets QT_LOGGING_RULES wants them.
void quietRemarks(QtMsgType type, const QMessageLogContext& /*where*/, const QString& text) {
    if (type == QtFatalMsg || type == QtCriticalMsg || qEnvironmentVariableIsSet("QT_LOGGING_RULES")) {
        std::cerr << "vantor-widget: " << text.toStdString() << '\n';
    }
    if (type == QtFatalMsg) { // a display that cannot be reached is no reason for a core file
        std::_Exit(1);
    }
}

bool hasDisplay() {
    return std::ranges::any_of(std::array{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"},
                               [](const char* name) { return !qEnvironmentVariableIsEmpty(name); });
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
    const hosts::qt::TerminationSignals ending;
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
    keepDriversOut();
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
    keepMemorySmall();
    std::signal(SIGPIPE, SIG_IGN); // whoever read the log may go away
    std::setlocale(LC_ALL, "");
    const std::variant<Options, int> read = readOptions(argc, argv);
    if (const int* status = std::get_if<int>(&read)) {
        return *status;
    }
    const auto& options = std::get<Options>(read);
    if (options.autostart) {
        return changeAutostart(*options.autostart);
    }
    if (!options.snapshot && !hasDisplay()) {
        std::cerr << "vantor-widget: there is no display; --snapshot draws the widget into a file\n";
        return 1;
    }
    qInstallMessageHandler(quietRemarks);
    return run(options, argc, argv);
}
