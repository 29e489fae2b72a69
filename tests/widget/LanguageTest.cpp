// SPDX-License-Identifier: MIT
#include "DemoInPlace.hpp"
#include "hosts/qt/Buttons.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/widget/WidgetWindow.hpp"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <clocale>

namespace vantor::hosts::widget {

using namespace qt;

namespace {

/// The card in one language.
class Language : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        const std::string locale = GetParam() + std::string(".UTF-8");
        qputenv("LC_ALL", locale.c_str());
        if (std::setlocale(LC_ALL, "") == nullptr) {
            GTEST_SKIP() << "the locale " << locale << " is not generated on this machine";
        }
        tests::putDemoInPlace();
        QApplication::setLayoutDirection(isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        m_window = std::make_unique<WidgetWindow>(Options{});
        m_window->show();
        QApplication::processEvents();
    }
    std::unique_ptr<WidgetWindow> m_window;
};

/// Also once the card was folded and a row has come that was hidden meanwhile.
TEST_P(Language, NothingIsCutOff) {
    const int width = m_window->card().width();
    auto* const row = m_window->findChild<QWidget*>(QStringLiteral("releasableSTORAGEStackView"));
    EXPECT_TRUE(row->isHidden());
    m_window->card().displayModeButton().click();
    m_window->card().displayModeButton().click();
    row->show();
    QApplication::processEvents();
    EXPECT_EQ(m_window->card().width(), width);
    for (const QLabel* label : m_window->findChildren<QLabel*>()) {
        if (label->isVisible()) {
            EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
                << label->objectName().toStdString();
        }
    }
    for (const auto* button : m_window->findChildren<QAbstractButton*>()) {
        if (button->isVisible() && dynamic_cast<const PillButton*>(button) != nullptr) {
            EXPECT_LE(button->fontMetrics().horizontalAdvance(button->text()), button->width() - 16)
                << button->objectName().toStdString();
        }
    }
    for (const RingView* ring : m_window->card().rings()) {
        const QFontMetricsF metrics(m_window->card().theme().font(TypeSize::small));
        EXPECT_LE(metrics.horizontalAdvance(ring->caption()) * 0.6, 85) << ring->caption().toStdString();
    }
    EXPECT_LT(m_window->card().width(), 520); // a card, not a banner
}

TEST_P(Language, SpeaksItAndReadsInItsDirection) {
    const bool english = std::string_view(GetParam()) == "en_US";
    EXPECT_EQ(hostText("host_REFRESH") == QStringLiteral("Refresh"), english);
    const bool mirrored = m_window->card().rings()[0]->x() > m_window->card().rings()[2]->x();
    EXPECT_EQ(mirrored, std::string_view(GetParam()) == "ar_EG");
}

INSTANTIATE_TEST_SUITE_P(All, Language,
                         ::testing::Values("en_US", "ar_EG", "de_DE", "es_ES", "fr_FR", "it_IT", "ja_JP",
                                           "pt_BR", "ru_RU", "zh_CN"),
                         [](const auto& each) { return std::string(each.param); });

} // namespace

} // namespace vantor::hosts::widget
