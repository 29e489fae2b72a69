// SPDX-License-Identifier: MIT
#include "hosts/qt/DesktopSettings.hpp"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <utility>

namespace vantor::hosts::qt {

namespace {

const auto busService = QStringLiteral("org.freedesktop.DBus");
const auto portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const auto portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const auto appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const auto gnomeGroup = QStringLiteral("org.gnome.desktop.interface");
const auto kdeGroup = QStringLiteral("org.kde.kdeglobals.KDE");

constexpr double greatestTextScale = 3;
constexpr int colourPatience = 60; // milliseconds that the first picture may wait for the desktop's colours

/// Three numbers within 0...1; anything else means that the desktop has no accent.
QColor accentOf(const QVariant& value) {
    if (!value.canConvert<QDBusArgument>()) {
        return {};
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)")) {
        return {};
    }
    double red = -1;
    double green = -1;
    double blue = -1;
    argument.beginStructure();
    argument >> red >> green >> blue;
    argument.endStructure();
    const auto within = [](double component) { return component >= 0 && component <= 1; };
    return within(red) && within(green) && within(blue)
               ? QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green),
                                  static_cast<float>(blue))
               : QColor();
}

QDBusMessage readRequest() {
    QDBusMessage request = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface,
                                                          QStringLiteral("ReadAll"));
    request << QStringList{appearanceGroup, gnomeGroup, kdeGroup};
    return request;
}

} // namespace

QDBusConnection DesktopSettings::sessionBus() {
    const bool named = qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS");
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return named || QFileInfo::exists(usual) ? QDBusConnection::sessionBus()
                                             : QDBusConnection(QStringLiteral("none"));
}

DesktopSettings::DesktopSettings(std::function<void(const DesktopWishes&)> changed, QDBusConnection bus)
    : m_changed(std::move(changed)), m_bus(std::move(bus)) {
    if (m_bus.isConnected()) {
        listen();
        readAll();
    }
}

void DesktopSettings::listen() {
    qRegisterMetaType<QDBusVariant>(); // or the slot is not found before the first message has come
    // The bus library compares signatures letter by letter, blanks included.
    const QByteArray slot =
        QMetaObject::normalizedSignature(SLOT(settingChanged(QString, QString, QDBusVariant)));
    // From whoever owns the portal's path: tracking the owner of its name loses signals when it starts or
    // restarts.
    m_bus.connect(QString(), portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                  slot.constData());
    for (const auto& locker :
         {QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("org.gnome.ScreenSaver"),
          QStringLiteral("org.cinnamon.ScreenSaver"), QStringLiteral("org.mate.ScreenSaver")}) {
        m_bus.connect(QString(), QString(), locker, QStringLiteral("ActiveChanged"), this,
                      SLOT(lockChanged(bool, QDBusMessage)));
    }
    m_locker.setConnection(m_bus);
    m_locker.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    // One that dies does not say that the screen is no longer locked.
    connect(&m_locker, &QDBusServiceWatcher::serviceUnregistered, this, [this] { setLocked(false); });
}

/// A portal that runs answers within milliseconds; one that must be started first is not waited for.
void DesktopSettings::readAll() {
    QDBusMessage request = readRequest();
    request.setAutoStartService(false);
    const QDBusMessage reply = m_bus.call(request, QDBus::Block, colourPatience);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        takeAll(reply);
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(readRequest()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        if (!finished->isError()) {
            takeAll(finished->reply());
            m_changed(m_wishes);
        }
        finished->deleteLater();
    });
}

void DesktopSettings::takeAll(const QDBusMessage& reply) {
    const QList<QVariant> arguments = reply.arguments();
    if (arguments.isEmpty() || reply.signature() != QLatin1String("a{sa{sv}}")) {
        return;
    }
    const auto groups = qdbus_cast<QMap<QString, QVariantMap>>(arguments.front());
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        for (auto setting = group->begin(); setting != group->end(); ++setting) {
            take(group.key(), setting.key(), setting.value());
        }
    }
}

void DesktopSettings::take(const QString& group, const QString& key, const QVariant& value) {
    if (group == appearanceGroup && key == QLatin1String("color-scheme")) {
        const uint scheme = value.toUInt(); // 0: no wish
        m_wishes.appearance = scheme == 1   ? std::optional(platform::Appearance::dark)
                              : scheme == 2 ? std::optional(platform::Appearance::light)
                                            : std::nullopt;
    } else if (group == appearanceGroup && key == QLatin1String("accent-color")) {
        m_wishes.accent = accentOf(value);
    } else if (group == appearanceGroup && key == QLatin1String("reduced-motion")) {
        m_wishes.reducedMotion = value.toUInt() == 1;
    } else if (group == gnomeGroup && key == QLatin1String("enable-animations")) {
        m_wishes.reducedMotion = !value.toBool();
    } else if (group == gnomeGroup && key == QLatin1String("text-scaling-factor")) {
        const double factor = value.toDouble();
        m_wishes.textScale = factor >= 1 && factor <= greatestTextScale ? factor : 1;
    } else if (group == kdeGroup && key == QLatin1String("AnimationDurationFactor")) {
        bool isNumber = false;
        const double factor = value.toDouble(&isNumber);
        m_wishes.reducedMotion = isNumber && factor == 0;
    }
}

void DesktopSettings::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    take(group, key, value.variant());
    m_changed(m_wishes);
}

void DesktopSettings::lockChanged(bool active, const QDBusMessage& message) {
    m_locker.setWatchedServices(active ? QStringList{message.service()} : QStringList{});
    setLocked(active);
    if (active) {
        askForLocker(message.service());
    }
}

/// One that went before it was watched has been told of already, to nobody.
void DesktopSettings::askForLocker(const QString& name) {
    QDBusMessage question = QDBusMessage::createMethodCall(
        busService, QStringLiteral("/org/freedesktop/DBus"), busService, QStringLiteral("NameHasOwner"));
    question << name;
    auto* const answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this, name](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                const QDBusPendingReply<bool> isThere = *finished;
                if (isThere.isValid() && !isThere.value() && m_locker.watchedServices().contains(name)) {
                    setLocked(false);
                }
            });
}

void DesktopSettings::setLocked(bool locked) {
    if (std::exchange(m_wishes.locked, locked) != locked) {
        m_changed(m_wishes);
    }
}

} // namespace vantor::hosts::qt
