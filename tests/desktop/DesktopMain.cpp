// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QApplication>

/// Every test finds an application without a display, in the C locale.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
