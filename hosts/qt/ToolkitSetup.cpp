// SPDX-License-Identifier: MIT
#include "hosts/qt/ToolkitSetup.hpp"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace vantor::hosts::qt {

namespace {

/// The handler that the toolkit takes is a plain function.
std::string& programName() {
    static std::string name;
    return name;
}

void handleRemark(QtMsgType type, const QMessageLogContext& /*where*/, const QString& text) {
    if (type == QtFatalMsg || type == QtCriticalMsg || qEnvironmentVariableIsSet("QT_LOGGING_RULES")) {
        std::cerr << programName() << ": " << text.toStdString() << '\n';
    }
    if (type == QtFatalMsg) { // a display that cannot be reached is no reason for a core file
        std::_Exit(1);
    }
}

} // namespace

bool hasDisplay() {
    return std::ranges::any_of(std::array{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"},
                               [](const char* name) { return !qEnvironmentVariableIsEmpty(name); });
}

void keepDriversOut() {
    for (const auto& [name, value] : {std::pair("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION", "none"),
                                      std::pair("QT_WAYLAND_DISABLE_WINDOWDECORATION", "1"),
                                      std::pair("QT_XCB_GL_INTEGRATION", "none")}) {
        if (!qEnvironmentVariableIsSet(name)) {
            qputenv(name, value);
        }
    }
}

void quietRemarks(std::string program) {
    programName() = std::move(program);
    qInstallMessageHandler(handleRemark);
}

void quitWhenReadable(int descriptor) {
    auto* const notifier =
        new QSocketNotifier(descriptor, QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
}

} // namespace vantor::hosts::qt
