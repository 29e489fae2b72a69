// SPDX-License-Identifier: MIT
/// What the card and its ring in the tray look like in all that may happen to them, as in the documents.
#include "Eventually.hpp"
#include "PictureComparison.hpp"
#include "WidgetStage.hpp"
#include "hosts/widget/TrayRing.hpp"
#include "hosts/widget/WidgetCard.hpp"
#include "hosts/widget/WidgetWindow.hpp"

#include <gtest/gtest.h>

#include <QIcon>
#include <QPainter>
#include <array>

namespace vantor::hosts::widget {

namespace {

using platform::Appearance;
using tests::expectAsInDocuments;

constexpr std::array levels{0.35, 0.62, 0.78, 0.95}; // green, yellow, orange, red

class InTheDocuments : public ::testing::Test {
protected:
    void load() {
        m_stage.load();
        m_card = std::make_unique<WidgetCard>(m_stage.controller);
        m_card->setCanExpand(true);
    }
    void setRings(std::size_t firstLevel) {
        auto& controller = *m_stage.controller;
        for (const auto& chart :
             {controller.ramChartView(), controller.storateChartView(), controller.cpuChartView()}) {
            m_stage.model(chart).setProgress(levels.at(firstLevel++));
        }
    }
    QImage drawn(Appearance appearance, bool expanded) {
        m_card->flush();
        m_card->setTheme(qt::Theme::of(appearance, 1, {}));
        m_card->setExpanded(expanded);
        m_card->setContentSize({m_card->neededWidth(), expanded ? 360.0 : 110.0});
        m_card->setAttribute(Qt::WA_DontShowOnScreen);
        m_card->show();
        m_card->animator().settle();
        QImage image(m_card->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        m_card->render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    }

    tests::WidgetStage m_stage;
    std::unique_ptr<WidgetCard> m_card;
};

TEST_F(InTheDocuments, EachLevelHasItsColour) {
    load();
    for (const auto& [appearance, name] : {std::pair(Appearance::light, "states/levels-light.png"),
                                           std::pair(Appearance::dark, "states/levels-dark.png")}) {
        setRings(0);
        const QImage upper = drawn(appearance, false);
        setRings(1);
        const QImage lower = drawn(appearance, false);
        QImage both(upper.width(), 2 * upper.height(), upper.format());
        both.fill(Qt::transparent);
        QPainter painter(&both);
        painter.drawImage(0, 0, upper);
        painter.drawImage(0, upper.height(), lower);
        painter.end();
        expectAsInDocuments(both, name);
    }
}

TEST_F(InTheDocuments, AFailedSourceHasDashesAndNoRing) {
    load();
    m_card->showFailures({{platform::Source::storage, "/home: no answer"}});
    expectAsInDocuments(drawn(Appearance::light, true), "states/failed.png");
}

TEST_F(InTheDocuments, AReleasableRowHasItsPlace) {
    m_stage.setStore(tests::storedFlag("isReleasableSTORAGEShow"));
    load();
    expectAsInDocuments(drawn(Appearance::dark, true), "states/releasable.png");
}

TEST_F(InTheDocuments, WithoutTheAppNothingInvitesToBePressed) {
    load();
    m_card->setAppIsThere(false);
    expectAsInDocuments(drawn(Appearance::light, true), "states/without-app.png");
}

/// On a white ground and on a middle one.
TEST_F(InTheDocuments, ACardWithoutAFrameStandsOutFromItsGround) {
    Options options;
    options.frameless = true;
    options.expanded = false;
    options.appearance = AppearanceChoice::light;
    WidgetWindow window(options);
    window.show();
    ASSERT_TRUE(tests::eventually([&window] { return window.presence().isSeen(); }));
    m_stage.play();
    window.card().flush();
    window.card().animator().settle();
    QImage grounds(window.width() + 24, 2 * (window.height() + 24), QImage::Format_RGB32);
    grounds.fill(Qt::white);
    QPainter painter(&grounds);
    painter.fillRect(0, grounds.height() / 2, grounds.width(), grounds.height() / 2,
                     QColor(0x6E, 0x8C, 0xA8));
    for (const int top : {12, grounds.height() / 2 + 12}) {
        painter.drawPixmap(12, top, window.grab());
    }
    painter.end();
    expectAsInDocuments(grounds, "states/frameless.png");
}

/// On a light panel and on a dark one, in the size that most have; the last has no figure.
TEST_F(InTheDocuments, TheTrayTellsTheLevelAtAGlance) {
    constexpr int size = 22;
    load();
    QImage panels(size * 5, size * 2, QImage::Format_RGB32);
    QPainter painter(&panels);
    painter.fillRect(0, 0, panels.width(), size, QColor(0xF0, 0xF0, 0xF0));
    painter.fillRect(0, size, panels.width(), size, QColor(0x20, 0x20, 0x20));
    for (std::size_t level = 0; level <= levels.size(); ++level) {
        platform::Layers strokes;
        if (level < levels.size()) {
            m_stage.model(m_stage.controller->ramChartView()).setProgress(levels.at(level));
            (void)drawn(Appearance::light, false);
            strokes = m_card->rings().front()->restingLayers();
            strokes.resize(2); // without its texts
        }
        for (int row = 0; row < 2; ++row) {
            ringIcon(strokes, row == 0 ? Appearance::light : Appearance::dark)
                .paint(&painter, static_cast<int>(level) * size, row * size, size, size);
        }
    }
    painter.end();
    expectAsInDocuments(panels, "states/tray-22.png");
}

} // namespace

} // namespace vantor::hosts::widget
