// SPDX-License-Identifier: MIT
#include "Eventually.hpp"
#include "TestTree.hpp"
#include "hosts/common/ChildProcess.hpp"
#include "hosts/qt/DesktopSettings.hpp"
#include "hosts/qt/SessionBus.hpp"
#include "platform/posix/Environment.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThread>
#include <csignal>
#include <optional>
#include <vector>

namespace vantor::hosts::widget {

using namespace qt;

namespace {

using common::ChildProcess;
using tests::eventually;

const auto portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const auto appearanceGroup = QStringLiteral("org.freedesktop.appearance");

/// A settings portal that answers what the test says, on a thread of its own as a real one would.
class Portal final : public QDBusVirtualObject {
public:
    QMap<QString, QVariantMap> settings;

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        return message.member() == QLatin1String("ReadAll") &&
               connection.send(message.createReply(QVariant::fromValue(settings)));
    }
};

/// Red, green and blue as the portal packs them.
QVariant colour(double red, double green, double blue) {
    QDBusArgument packed;
    packed.beginStructure();
    packed << red << green << blue;
    packed.endStructure();
    return QVariant::fromValue(packed);
}

class Settings : public ::testing::Test {
protected:
    void SetUp() override {
        const std::string address = "unix:path=" + (m_folder.root() / "bus").string();
        // Not by the toolkit's way to start programs, which the thread sanitizer does not survive.
        m_daemon =
            ChildProcess::start("/usr/bin/dbus-daemon", {"--session", "--nofork", "--address=" + address},
                                platform::posix::wholeEnvironment());
        if (!m_daemon) {
            GTEST_SKIP() << "dbus-daemon is not installed";
        }
        ASSERT_TRUE(eventually([&address] { return answersAsBus(address, std::chrono::seconds(5)); }));
        m_address = QString::fromStdString(address);
        m_listener = QDBusConnection::connectToBus(m_address, QStringLiteral("listener"));
        m_bus = QDBusConnection::connectToBus(m_address, QStringLiteral("portal"));
        m_portal.settings = {
            {appearanceGroup, {{QStringLiteral("color-scheme"), 1U}}},
            {QStringLiteral("org.gnome.desktop.interface"), {{QStringLiteral("enable-animations"), false}}}};
        m_portal.moveToThread(&m_thread);
        m_thread.start();
        ASSERT_TRUE(m_bus.registerVirtualObject(portalPath, &m_portal));
        ASSERT_TRUE(m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    }
    void TearDown() override {
        m_thread.quit();
        m_thread.wait();
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
        QDBusConnection::disconnectFromBus(QStringLiteral("listener"));
        if (m_daemon) {
            ::kill(m_daemon->number(), SIGTERM);
            m_daemon->waitForEnd();
        }
    }

    void tell(const QString& path, const QString& interface, const QString& name,
              const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createSignal(path, interface, name);
        message.setArguments(arguments);
        m_bus.send(message);
    }
    static void sayLocked(const QDBusConnection& locker) {
        QDBusMessage message = QDBusMessage::createSignal(QStringLiteral("/org/gnome/ScreenSaver"),
                                                          QStringLiteral("org.gnome.ScreenSaver"),
                                                          QStringLiteral("ActiveChanged"));
        locker.send(message << true);
    }
    void tellSetting(const QString& group, const QString& key, const QVariant& value) {
        tell(portalPath, settingsInterface, QStringLiteral("SettingChanged"),
             {group, key, QVariant::fromValue(QDBusVariant(value))});
    }
    std::optional<ChildProcess> m_daemon;
    tests::TestTree m_folder;
    QThread m_thread;
    Portal m_portal;
    QString m_address;
    QDBusConnection m_bus{QString()};
    QDBusConnection m_listener{QString()}; // the process has one session bus, each test one of its own
};

TEST_F(Settings, AreReadFirstAndThenFollowed) {
    qDBusRegisterMetaType<QMap<QString, QVariantMap>>();
    int changes = 0;
    const DesktopSettings settings([&changes](const DesktopWishes&) { ++changes; }, m_listener);
    EXPECT_EQ(settings.wishes().appearance, platform::Appearance::dark); // known before the first picture
    EXPECT_TRUE(settings.wishes().reducedMotion);

    tellSetting(appearanceGroup, QStringLiteral("color-scheme"), 2U);
    EXPECT_TRUE(eventually([&] { return settings.wishes().appearance == platform::Appearance::light; }));
    tellSetting(appearanceGroup, QStringLiteral("color-scheme"), 0U);
    EXPECT_TRUE(eventually([&] { return !settings.wishes().appearance; }));
    tellSetting(QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("enable-animations"), true);
    EXPECT_TRUE(eventually([&] { return !settings.wishes().reducedMotion; }));
    tellSetting(QStringLiteral("org.kde.kdeglobals.KDE"), QStringLiteral("AnimationDurationFactor"),
                QStringLiteral("0"));
    EXPECT_TRUE(eventually([&] { return settings.wishes().reducedMotion; }));
    tellSetting(appearanceGroup, QStringLiteral("accent-color"), colour(0.2, 0.4, 0.6));
    EXPECT_TRUE(eventually([&] { return settings.wishes().accent == QColor::fromRgbF(0.2F, 0.4F, 0.6F); }));
    for (const QVariant& none : {colour(0.2, 0.4, 1.6), QVariant(QStringLiteral("no colour"))}) {
        tellSetting(appearanceGroup, QStringLiteral("accent-color"), colour(0.2, 0.4, 0.6));
        EXPECT_TRUE(eventually([&] { return settings.wishes().accent.isValid(); }));
        tellSetting(appearanceGroup, QStringLiteral("accent-color"), none);
        EXPECT_TRUE(eventually([&] { return !settings.wishes().accent.isValid(); }));
    }

    tell(QStringLiteral("/org/freedesktop/ScreenSaver"), QStringLiteral("org.freedesktop.ScreenSaver"),
         QStringLiteral("ActiveChanged"), {true});
    EXPECT_TRUE(eventually([&] { return settings.wishes().locked; }));
    EXPECT_EQ(changes, 10);
}

/// One that dies while the screen is locked does not say that it no longer is; nor does one that nobody
/// heard.
TEST_F(Settings, ALockEndsWithItsLockerOrWithSomebodyWhoPresses) {
    DesktopSettings settings([](const DesktopWishes&) {}, m_listener);
    const auto isLocked = [&settings] { return settings.wishes().locked; };
    const auto isUnlocked = [&settings] { return !settings.wishes().locked; };
    sayLocked(QDBusConnection::connectToBus(m_address, QStringLiteral("locker")));
    EXPECT_TRUE(eventually(isLocked));
    QDBusConnection::disconnectFromBus(QStringLiteral("locker"));
    EXPECT_TRUE(eventually(isUnlocked));
    sayLocked(m_bus);
    EXPECT_TRUE(eventually(isLocked));
    settings.noteInput();
    EXPECT_FALSE(settings.wishes().locked);
}

TEST_F(Settings, ALockerThatWentBeforeAnybodyHeardItLocksNothing) {
    std::vector<bool> told;
    const DesktopSettings settings([&told](const DesktopWishes& wishes) { told.push_back(wishes.locked); },
                                   m_listener);
    const QString name = [this] {
        const QDBusConnection locker = QDBusConnection::connectToBus(m_address, QStringLiteral("locker"));
        sayLocked(locker);
        // It is answered in turn: the bus has passed the signal on.
        (void)locker.interface()->isServiceRegistered(locker.baseService());
        return locker.baseService();
    }();
    QDBusConnection::disconnectFromBus(QStringLiteral("locker"));
    while (m_bus.interface()->isServiceRegistered(name)) { // without a turn of our own loop
    }
    EXPECT_TRUE(eventually([&told] { return told == std::vector{true, false}; }));
}

} // namespace

} // namespace vantor::hosts::widget
