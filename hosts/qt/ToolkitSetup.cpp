// SPDX-License-Identifier: MIT
#include "hosts/qt/ToolkitSetup.hpp"

#include "hosts/qt/HostText.hpp"
#include "hosts/qt/SessionBus.hpp"
#include "hosts/qt/SingleInstance.hpp"
#include "platform/posix/Environment.hpp"

#include <QFont>
#include <QGuiApplication>
#include <QRawFont>
#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <mutex>
#include <utility>

namespace vantor::hosts::qt {

namespace {

/// The handler that the toolkit takes is a plain function, and any thread may call it, also while the program
/// ends.
Say say = nullptr;

/// Why no window came, as the toolkit said it before it gave up.
class FirstReason {
public:
    static FirstReason& instance() {
        static auto& reason = *new FirstReason; // never destroyed
        return reason;
    }
    void note(const QString& text) {
        const std::scoped_lock lock(m_mutex);
        if (m_text.isEmpty()) {
            m_text = text;
        }
    }
    std::string text() {
        const std::scoped_lock lock(m_mutex);
        return m_text.simplified().toStdString();
    }

private:
    std::mutex m_mutex;
    QString m_text;
};

std::string displayName() {
    std::string names;
    for (const char* const variable : {"WAYLAND_DISPLAY", "DISPLAY"}) {
        if (const std::string name = platform::posix::environmentText(variable); !name.empty()) {
            names += (names.empty() ? "" : " or ") + name;
        }
    }
    return names;
}

/// The toolkit's advice is for those who build programs with it.
std::string noWindowText() {
    std::string text =
        displayName().empty() ? "no window can be shown" : "cannot reach the display " + displayName();
    if (const std::string reason = FirstReason::instance().text(); !reason.empty()) {
        text += " (" + reason + ")";
    }
    return text + "; --snapshot draws into a file";
}

void handleRemark(QtMsgType type, const QMessageLogContext& where, const QString& text) {
    const bool isAsked = qEnvironmentVariableIsSet("QT_LOGGING_RULES");
    const bool isOfWindows = QByteArrayView(where.category).startsWith("qt.qpa");
    const bool isGone = text.contains(QLatin1String("connection broke"));
    if (type == QtFatalMsg && text.contains(QLatin1String("platform plugin"))) {
        say(noWindowText());
    } else if (isGone) {
        say("the display " + displayName() + " is gone");
    } else if (type == QtFatalMsg || isAsked || (type == QtCriticalMsg && !isOfWindows)) {
        say(text.toStdString());
    } else if (type != QtDebugMsg && type != QtInfoMsg && isOfWindows) {
        FirstReason::instance().note(text);
    }
    // A display that cannot be reached is no reason for a core file. After one that is gone the toolkit would
    // end the program itself, through the destructors of static objects that workers may still use.
    if (type == QtFatalMsg || isGone) {
        std::_Exit(1);
    }
}

} // namespace

void setEnvironment(bool forPicture) {
    if (forPicture) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qunsetenv("QT_SCALE_FACTOR"); // the command line alone decides
        refuseSessionBus();
    } else {
        settleSessionBus();
        makeRoomForToken();
    }
    keepDriversOut();
}

void nameApplication(const char* program) {
    QGuiApplication::setApplicationName(QString::fromLatin1(program));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Vantor"));
    QGuiApplication::setDesktopFileName(QString::fromLatin1(program));
    QGuiApplication::setLayoutDirection(isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
}

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

void quietRemarks(Say complain) {
    say = complain;
    qInstallMessageHandler(handleRemark);
}

bool hasFonts() {
    // The toolkit's last resort, which draws boxes, comes from no file.
    return !QRawFont::fromFont(QFont()).fontTable("head").isEmpty();
}

void quitWhenReadable(int descriptor) {
    auto* const notifier =
        new QSocketNotifier(descriptor, QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::exit(); // quit() asks the windows, and one with a ring in the tray only steps back
    });
}

} // namespace vantor::hosts::qt
