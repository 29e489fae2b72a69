// SPDX-License-Identifier: MIT
#include "WidgetStage.hpp"
#include "hosts/qt/Buttons.hpp"
#include "hosts/widget/WidgetCard.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <algorithm>

namespace vantor::hosts::widget {

using namespace qt;

namespace {

using ::testing::ElementsAre;

/// The card on the simulated machine, laid out but on no screen.
class Card : public ::testing::Test {
protected:
    void SetUp() override { open(1, platform::Appearance::light); }
    void TearDown() override {
        m_card.reset();
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void open(double pointScale, platform::Appearance appearance) {
        m_stage.load();
        m_card = std::make_unique<WidgetCard>(m_stage.controller);
        m_card->setTheme(Theme::of(appearance, pointScale, {}));
        m_card->setCanExpand(true);
        m_card->setExpanded(true);
        m_card->setContentSize({m_card->neededWidth(), 360});
        m_card->setAttribute(Qt::WA_DontShowOnScreen);
        m_card->show();
        m_card->flush();
    }
    template<class Widget = QWidget>
    Widget& widget(const char* name) {
        auto* found = dynamic_cast<Widget*>(m_card->findChild<QWidget*>(QLatin1String(name)));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    QString text(const char* name) { return widget<QLabel>(name).text(); }
    void press(const char* name) { widget<QAbstractButton>(name).click(); }

    tests::WidgetStage m_stage;
    std::unique_ptr<WidgetCard> m_card;
};

TEST_F(Card, ShowsWhatTheTreeSays) {
    for (const Section& section : sections) {
        int above = widget((std::string(sourceName(section.source)) + "Heading").c_str())
                        .mapTo(m_card.get(), QPoint())
                        .y();
        for (const SectionRow& row : section.rows) {
            for (const LabelOutlet& outlet : {row.caption, row.figure}) {
                const std::string& said = ((*m_stage.controller).*outlet.label)->text();
                const std::string shown = text(std::string(outlet.name).c_str()).toStdString();
                EXPECT_EQ(shown, said.empty() ? "–" : said) << outlet.name;
            }
            const int top = widget(std::string(row.figure.name).c_str()).mapTo(m_card.get(), QPoint()).y();
            EXPECT_TRUE(row.stack || top > above) << row.figure.name << " stands out of order";
            above = top;
        }
    }
    EXPECT_EQ(text("usedRAMLabel"), "3 GB");
    EXPECT_EQ(text("userCPULabel"), "20.00 %");

    m_stage.machine.change([](auto& state) { state.virtualMemory.free_count = 131072; });
    m_stage.advance(2);
    EXPECT_EQ(text("usedRAMLabel"), "3 GB"); // only noted until the card is asked to show it
    m_card->flush();
    EXPECT_EQ(text("usedRAMLabel"), "2 GB");
    EXPECT_EQ(widget<RingView>("progressRAMView").percentage(), "50%");
}

TEST_F(Card, HidesTheReleasableRowUnlessPreferred) {
    EXPECT_TRUE(widget("releasableSTORAGEStackView").isHidden());
    m_stage.setStore(tests::storedFlag("isReleasableSTORAGEShow"));
    m_stage.advance(2);
    m_card->flush();
    EXPECT_FALSE(widget("releasableSTORAGEStackView").isHidden());
    EXPECT_EQ(text("releasableSTORAGELabel"), "10 GB");
    EXPECT_TRUE(widget("freeSTORAGELabel").toolTip().contains("10 GB"));
    EXPECT_TRUE(widget("totalSTORAGELabel").toolTip().contains("7 GB"));
}

TEST_F(Card, HandsEveryPressToItsAction) {
    for (const char* name : {"cleanRam", "openApp", "showCpuChart", "progressRAMView", "progressSTORAGEView",
                             "progressCPUView", "memoryTotal"}) {
        press(name);
    }
    EXPECT_THAT(m_stage.context->opened,
                ElementsAre("vantor://action?cleanRam", "vantor://action?showStorage",
                            "vantor://action?showCpu", "vantor://action?cleanRam",
                            "vantor://action?showStorage", "vantor://action?showCpu",
                            "vantor://action?showRam"));
    const auto before = m_stage.controller->refreshTime();
    press("manualInfoRefresh");
    EXPECT_GE(m_stage.loop.queue.waiting(), 3U); // storage, memory, processor
    EXPECT_NE(m_stage.controller->refreshTime(), before);
}

TEST_F(Card, CanBeUsedByKeyboardAlone) {
    std::vector<std::string> reached;
    widget("progressRAMView").setFocus(Qt::TabFocusReason);
    for (int step = 0; step < 12; ++step) {
        QWidget* focused = m_card->focusWidget();
        const std::string name = focused->objectName().toStdString();
        if (std::ranges::find(reached, name) != reached.end()) {
            break;
        }
        reached.push_back(name);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        if (name != "displayModeButton") {
            QApplication::sendEvent(focused, &press);
        }
        QApplication::sendEvent(focused, &tab);
    }
    EXPECT_THAT(reached,
                ElementsAre("progressRAMView", "progressSTORAGEView", "progressCPUView", "manualInfoRefresh",
                            "displayModeButton", "memoryTotal", "cleanRam", "openApp", "showCpuChart"));
    EXPECT_EQ(m_stage.context->opened.size(), 7U); // one refreshed, one was spared
}

TEST_F(Card, KeepsTheRingsInPlaceBetweenItsTwoHeights) {
    const QRect expanded = widget("progressCPUView").geometry();
    EXPECT_EQ(m_card->height(), 360);
    m_card->setExpanded(false);
    m_card->setContentSize({m_card->neededWidth(), 110});
    EXPECT_EQ(m_card->height(), 110);
    EXPECT_EQ(widget("progressCPUView").geometry(), expanded);
    EXPECT_FALSE(widget("cleanRam").isVisible());
    EXPECT_EQ(widget<QAbstractButton>("displayModeButton").text(), "Show More");
}

/// The square of a ring keeps room for half its stroke and for its caption.
TEST_F(Card, NothingOfARingIsCutOff) {
    for (const RingView* view : m_card->rings()) {
        const RingView& ring = *view;
        const QRectF bounds = QRectF(ring.rect()).adjusted(-0.5, -0.5, 0.5, 0.5);
        for (const platform::Layer& layer : ring.layers()) {
            if (const auto* stroke = std::get_if<platform::StrokeLayer>(&layer)) {
                for (const auto& arc : stroke->path.arcs) {
                    const double reach = arc.radius + stroke->lineWidth / 2;
                    EXPECT_GE(arc.center.x - reach, bounds.left());
                    EXPECT_LE(arc.center.x + reach, bounds.right());
                    EXPECT_GE(arc.center.y - reach, bounds.top());
                }
            } else {
                const auto& text = std::get<platform::TextLayer>(layer);
                EXPECT_LE(platform::CGRectGetMaxY(text.frame), bounds.bottom());
            }
        }
    }
}

TEST_F(Card, GrowsWithTheTextSize) {
    const QSize before = m_card->size();
    const int rowBefore = widget("usedRAMLabel").height();
    m_card->setTheme(Theme::of(platform::Appearance::dark, 1.5, {}));
    m_card->setContentSize({m_card->neededWidth(), 360});
    EXPECT_EQ(m_card->height(), before.height() * 3 / 2);
    EXPECT_NEAR(widget("usedRAMLabel").height(), rowBefore * 1.5, 0.5);
    EXPECT_EQ(widget("usedRAMLabel").font().pixelSize(), 20); // 13 points
}

TEST_F(Card, MirrorsForRightToLeftScripts) {
    QApplication::setLayoutDirection(Qt::RightToLeft);
    open(1, platform::Appearance::light);
    EXPECT_GT(widget("progressRAMView").x(), widget("progressCPUView").x());
    EXPECT_GT(widget("usedRAMTitleLabel").x(), widget("usedRAMLabel").x());
    EXPECT_TRUE(widget<QLabel>("usedRAMLabel").alignment().testFlag(Qt::AlignLeft));
}

TEST_F(Card, NamesFailedSourcesAtTheirHeading) {
    m_card->showFailures({{platform::Source::network, "/proc/net/dev cannot be read"}});
    EXPECT_TRUE(text("networkHeading").contains("Not available"));
    EXPECT_EQ(widget("networkHeading").toolTip(), "/proc/net/dev cannot be read");
    m_card->showFailures({{platform::Source::storage,
                           "/home/<img src='/etc/x'>\u202e: gone"}}); // a folder's name is no markup
    EXPECT_EQ(QTextDocumentFragment::fromHtml(widget("storageHeading").toolTip()).toPlainText(),
              QStringLiteral("/home/<img src='/etc/x'>\uFFFD: gone"));
    m_card->showFailures({});
    EXPECT_EQ(text("networkHeading"), "Network");
}

/// In compact mode too, where the headings are hidden.
TEST_F(Card, AFailedSourceNeverLooksSound) {
    const RingView& ring = widget<RingView>("progressCPUView");
    ASSERT_EQ(text("userCPULabel"), "20.00 %");
    m_card->showFailures({{platform::Source::processor, "/proc/stat cannot be read"}});
    EXPECT_EQ(text("userCPULabel"), "–");
    EXPECT_EQ(ring.percentage(), "–");
    EXPECT_TRUE(std::get<platform::StrokeLayer>(ring.layers().at(1)).path.arcs.empty());
    m_card->showFailures({});
    EXPECT_EQ(text("userCPULabel"), "20.00 %");
    EXPECT_NE(ring.percentage(), "–");
}

TEST_F(Card, TellsWhatNoRowTells) {
    EXPECT_EQ(widget<HeadingButton>("memoryTotal").caption(), "of 4 GB");
    EXPECT_EQ(text("lowPriorityShare"), "5.00 % at low priority");
    QHelpEvent asked(QEvent::ToolTip, {}, {});
    QApplication::sendEvent(&widget("progressRAMView"), &asked);
    EXPECT_EQ(widget("progressRAMView").toolTip(), "Used RAM, 75%\n3 GB · of 4 GB\nFree Up Memory");
    QToolTip::showText({}, widget("progressRAMView").toolTip(), &widget("progressRAMView")); // and stays open
    m_stage.machine.change([](auto& state) { state.virtualMemory.free_count = 131072; });
    m_stage.advance(2);
    m_card->flush();
    EXPECT_EQ(QToolTip::text(), "Used RAM, 50%\n2 GB · of 4 GB\nFree Up Memory");
    QToolTip::hideText();
}

TEST_F(Card, SpeaksToScreenReaders) {
    QAccessibleInterface* ring = QAccessible::queryAccessibleInterface(&widget("progressRAMView"));
    ASSERT_NE(ring, nullptr);
    EXPECT_EQ(ring->role(), QAccessible::Button);
    EXPECT_EQ(ring->text(QAccessible::Name), "Used RAM, 75%");
    EXPECT_EQ(ring->text(QAccessible::Description), "Free Up Memory");
    EXPECT_EQ(ring->valueInterface()->currentValue().toDouble(), 75);
    ring->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    for (const char* name : {"manualInfoRefresh", "displayModeButton"}) {
        QAccessibleInterface* button = QAccessible::queryAccessibleInterface(&widget(name));
        EXPECT_FALSE(button->text(QAccessible::Name).isEmpty()) << name;
    }
    QAccessibleInterface* figure = QAccessible::queryAccessibleInterface(&widget("usedRAMLabel"));
    EXPECT_EQ(figure->text(QAccessible::Name), "Used RAM, 3 GB");
}

TEST_F(Card, AFormThatMissesAnOutletIsFatal) {
    delete &widget("userCPULabel");
    EXPECT_DEATH(OutletBinding(*m_card, m_stage.controller), "no widget for the outlet userCPULabel");
}

} // namespace

} // namespace vantor::hosts::widget
