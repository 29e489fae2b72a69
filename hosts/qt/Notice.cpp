// SPDX-License-Identifier: MIT
#include "hosts/qt/Notice.hpp"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>
#include <utility>

namespace vantor::hosts::qt {

namespace {

const auto service = QStringLiteral("org.freedesktop.Notifications");
const auto path = QStringLiteral("/org/freedesktop/Notifications");
const auto onPress = QStringLiteral("default"); // the notice itself, where a server lets that be pressed
const auto onButton = QStringLiteral("show");

} // namespace

Notice::Notice(const QDBusConnection& bus, std::function<void()> pressed, std::function<void()> refused)
    : m_bus(bus), m_pressed(std::move(pressed)), m_refused(std::move(refused)) {
    m_bus.connect(service, path, service, QStringLiteral("ActionInvoked"), this, SLOT(heed(uint, QString)));
}

void Notice::show(const QString& text, const QString& action) {
    if (!m_bus.isConnected()) {
        m_refused();
        return;
    }
    constexpr int itsOwnTime = -1, patience = 5000; // milliseconds
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Notify"));
    call.setArguments({QStringLiteral("Vantor"), m_id, QStringLiteral("vantor"), text, QString(),
                       QStringList{onPress, action, onButton, action}, QVariantMap(), itsOwnTime});
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, patience), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* done) {
        const QDBusPendingReply<uint> reply = *done;
        done->deleteLater();
        if (reply.isError()) {
            m_refused();
        } else {
            m_id = reply.value();
        }
    });
}

/// The signal goes to everybody: other programs' notices are pressed as well.
void Notice::heed(uint id, const QString& action) {
    if (id != 0 && id == m_id && (action == onPress || action == onButton)) {
        m_pressed();
    }
}

} // namespace vantor::hosts::qt
