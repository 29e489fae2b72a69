// SPDX-License-Identifier: MIT
#include "hosts/qt/TrayWatch.hpp"

#include "hosts/qt/X11Desktop.hpp"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <algorithm>
#include <chrono>
#include <utility>

namespace vantor::hosts::qt {

using std::chrono::milliseconds;

namespace {

const auto trayService = QStringLiteral("org.kde.StatusNotifierWatcher");
constexpr int ownerPatience = 200; // milliseconds
constexpr milliseconds soon{500};
constexpr milliseconds atLast{30'000};

QDBusMessage hostQuestion() {
    QDBusMessage question = QDBusMessage::createMethodCall(
        trayService, QStringLiteral("/StatusNotifierWatcher"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << trayService << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    return question;
}

} // namespace

TrayWatch::TrayWatch(std::function<void()> found) : m_found(std::move(found)) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        auto* const watcher =
            new QDBusServiceWatcher(trayService, bus, QDBusServiceWatcher::WatchForRegistration, this);
        connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
            m_again.setInterval(soon); // who shows the icons follows
            lookLater();
        });
    }
    m_again.setSingleShot(true);
    m_again.setTimerType(Qt::VeryCoarseTimer);
    m_again.setInterval(soon);
    m_again.callOnTimeout(this, [this] { lookLater(); });
    QMetaObject::invokeMethod(
        this, [this] { lookLater(); }, Qt::QueuedConnection);
}

/// As the toolkit asks: for one that collects the icons, and somebody who shows them. But without waiting: a
/// bus that no longer answers is no reason for a window to stand still.
void TrayWatch::askForHost() {
    auto* const answer = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(hostQuestion(), ownerPatience), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        if (reply.isValid() && reply.value().variant().toBool()) {
            find();
        }
    });
}

void TrayWatch::find() {
    m_again.stop();
    if (m_found) {
        std::exchange(m_found, {})();
    }
}

/// A tray of the older kind says that it comes to those only who watch the whole screen: it is looked for now
/// and then, less and less often.
void TrayWatch::lookLater() {
    if (hasX11Tray()) {
        find();
        return;
    }
    if (m_found) {
        askForHost();
        m_again.start(std::min(2 * m_again.intervalAsDuration(), atLast));
    }
}

} // namespace vantor::hosts::qt
