// SPDX-License-Identifier: MIT
#include "TestTree.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <clocale>
#include <optional>

namespace {

/// Every test finds an application without a display, in the C locale and an empty home, whatever the tests
/// before it chose.
class FreshStart final : public testing::EmptyTestEventListener {
public:
    FreshStart() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        makeFresh();
    }
    void OnTestStart(const testing::TestInfo& /*test*/) override {
        makeFresh();
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

private:
    void makeFresh() {
        m_home.emplace();
        for (const char* folder :
             {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
            qputenv(folder, m_home->root().c_str());
        }
        qputenv("LC_ALL", "C");
        qunsetenv("LANGUAGE");
        std::setlocale(LC_ALL, "C");
    }

    std::optional<vantor::tests::TestTree> m_home;
};

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new FreshStart); // which owns it
    QApplication::setStyle(QStringLiteral("fusion"));
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
