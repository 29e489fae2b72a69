// SPDX-License-Identifier: MIT
#include "hosts/qt/Notice.hpp"

#include "Eventually.hpp"
#include "TestTree.hpp"

#include <gtest/gtest.h>

#include <QProcess>
#include <QVariantMap>
#include <memory>

namespace vantor::hosts::qt {

/// A desktop's server of notices.
class NoticeServer final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QStringList shown;
    QStringList actions;

public slots: // NOLINT: the bus calls it by that name
    uint Notify(const QString& /*program*/, uint replaces, const QString& /*icon*/, const QString& summary,
                const QString& /*body*/, const QStringList& offered, const QVariantMap& /*hints*/,
                int /*timeout*/) {
        shown << summary;
        actions = offered;
        return replaces != 0 ? replaces : 7;
    }

signals:
    void ActionInvoked(uint id, const QString& action);
};

namespace {

class NoticeTest : public ::testing::Test {
protected:
    void SetUp() override {
        const std::string address = "--address=unix:path=" + (m_folder.root() / "bus").string();
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"),
                        QStringLiteral("--print-address"), QString::fromStdString(address)});
        if (!m_daemon.waitForStarted() || !m_daemon.waitForReadyRead()) {
            GTEST_SKIP() << "dbus-daemon is not installed";
        }
        m_address = QString::fromLatin1(m_daemon.readAllStandardOutput()).trimmed();
    }
    void TearDown() override {
        for (const char* const name : {"program", "server"}) {
            QDBusConnection::disconnectFromBus(QString::fromLatin1(name));
        }
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    [[nodiscard]] QDBusConnection bus(const char* name) const {
        return QDBusConnection::connectToBus(m_address, QString::fromLatin1(name));
    }
    const tests::TestTree m_folder;
    QProcess m_daemon;
    QString m_address;
};

TEST_F(NoticeTest, IsShownOnceAndLeadsWhereItsButtonSays) {
    NoticeServer server;
    QDBusConnection desktop = bus("server");
    ASSERT_TRUE(desktop.registerObject(QStringLiteral("/org/freedesktop/Notifications"), &server,
                                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
    ASSERT_TRUE(desktop.registerService(QStringLiteral("org.freedesktop.Notifications")));
    int pressed = 0, refused = 0;
    Notice notice(
        bus("program"), [&pressed] { ++pressed; }, [&refused] { ++refused; });
    notice.show(QStringLiteral("Short"), QStringLiteral("Look"));
    ASSERT_TRUE(tests::eventually([&] { return !server.shown.isEmpty(); }));
    EXPECT_EQ(server.shown, QStringList{QStringLiteral("Short")});
    EXPECT_EQ(server.actions.value(1), QStringLiteral("Look"));
    EXPECT_TRUE(tests::eventually([&] {
        emit server.ActionInvoked(8, server.actions.value(0)); // another program's
        emit server.ActionInvoked(7, QStringLiteral("other"));
        if (pressed == 0) {
            emit server.ActionInvoked(7, server.actions.value(2));
        }
        return pressed > 0;
    }));
    EXPECT_EQ(refused, 0);
}

TEST_F(NoticeTest, IsRefusedWhereNobodyShowsIt) {
    int refused = 0;
    const auto ignore = [] {};
    Notice notice(bus("program"), ignore, [&refused] { ++refused; });
    notice.show(QStringLiteral("Short"), QStringLiteral("Look"));
    EXPECT_TRUE(tests::eventually([&] { return refused == 1; }));
    Notice without(QDBusConnection(QStringLiteral("none")), ignore, [&refused] { ++refused; });
    without.show(QStringLiteral("Short"), QStringLiteral("Look"));
    EXPECT_EQ(refused, 2);
}

} // namespace

} // namespace vantor::hosts::qt

#include "NoticeTest.moc"
