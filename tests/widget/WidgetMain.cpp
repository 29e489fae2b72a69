// SPDX-License-Identifier: MIT
#include "TestTree.hpp"

#include <gtest/gtest.h>

#include <QApplication>

/// Every test finds an application without a display, in the C locale.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C");
    const vantor::tests::TestTree home;
    for (const char* folder :
         {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(folder, home.root().c_str());
    }
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
