// SPDX-License-Identifier: MIT
#include "hosts/qt/TrayWatch.hpp"

#include "hosts/qt/X11Desktop.hpp"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <algorithm>
#include <chrono>
#include <utility>

namespace vantor::hosts::qt {

using std::chrono::milliseconds;

namespace {

const auto trayService = QStringLiteral("org.kde.StatusNotifierWatcher");
constexpr int patience = 200; // milliseconds
constexpr milliseconds soon{500};
constexpr milliseconds atLast{30'000};

/// As the toolkit asks: for one that collects the icons, and somebody who shows them.
bool hasStatusHost() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(trayService)) {
        return false;
    }
    QDBusMessage question = QDBusMessage::createMethodCall(
        trayService, QStringLiteral("/StatusNotifierWatcher"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << trayService << QStringLiteral("IsStatusNotifierHostRegistered");
    const QDBusReply<QVariant> answer = bus.call(question, QDBus::Block, patience);
    return answer.isValid() && answer.value().toBool();
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

void TrayWatch::look() {
    if (m_found && (hasStatusHost() || hasX11Tray())) {
        m_again.stop();
        std::exchange(m_found, {})();
    }
}

/// A tray of the older kind says that it comes to those only who watch the whole screen: it is looked for now
/// and then, less and less often.
void TrayWatch::lookLater() {
    look();
    if (m_found) {
        m_again.start(std::min(2 * m_again.intervalAsDuration(), atLast));
    }
}

} // namespace vantor::hosts::qt
