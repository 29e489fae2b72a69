// SPDX-License-Identifier: MIT
#include "MadeUpFleet.hpp"
#include "fleet/FleetWords.hpp"
#include "hosts/wall/WallFace.hpp"

#include <QScrollBar>

namespace vantor::hosts::wall {

namespace {

using platform::FleetFigure;
using tests::ShownWall;

TEST(Wall, TellsAsMuchAsTheRoomAllows) {
    EXPECT_EQ(ShownWall(9).view().density(), Density::cards);
    EXPECT_EQ(ShownWall(70).view().density(), Density::rings);
    EXPECT_EQ(ShownWall(400).view().density(), Density::ring);
    EXPECT_EQ(ShownWall(2000).view().density(), Density::squares);
    EXPECT_EQ(ShownWall(5000).view().density(), Density::smallSquares);
    ShownWall wide(2000, QSize(1920, 1080));
    EXPECT_EQ(wide.view().density(), Density::squares);
    EXPECT_EQ(wide.view().verticalScrollBar()->maximum(), 0);
    wide.press(Qt::Key_Plus);
    EXPECT_EQ(wide.view().density(), Density::ring); // which it keeps, whatever the room
    wide.wall->resize(800, 600);
    EXPECT_EQ(wide.view().density(), Density::ring);
}

/// One rule for one figure: a ring's number is the head's, and its colour goes by what has been reached.
TEST(Wall, TellsAFigureTheSameEverywhere) {
    tests::putDemoInPlace();
    platform::FleetMachine machine;
    machine.figures = {0.746, 0.5, 0.8351, {}, {}};
    fleet::FleetRow row;
    row.machine = &machine;
    row.band = fleet::Band::orange;
    const Face face = faceOf(row, Density::rings);
    for (const auto figure : {FleetFigure::memory, FleetFigure::storage, FleetFigure::processor}) {
        const int percent = face.percents.at(static_cast<std::size_t>(figure)).value_or(-1);
        EXPECT_EQ(std::to_string(percent) + "%", fleet::figureText(figure, machine.figure(figure)));
    }
    EXPECT_EQ(face.percents.back(), 84);
    EXPECT_EQ(fleet::figureText(FleetFigure::sent, 0.2), "0 KB/s"); // not in words, as in the widget
    EXPECT_EQ(face.bands.back(), fleet::Band::orange);
}

/// Only machines that look otherwise are painted again.
TEST(Wall, PaintsWhatChangedAlone) {
    ShownWall shown(2000);
    (void)shown.painted();
    shown.fleet.publish();
    EXPECT_EQ(shown.painted(), 0U);
    shown.fleet.machine(6).figures[0] = 0.99; // 0.21 and 0.99 are other colours
    shown.fleet.machine(8).figures[0] = 0.21; // the same
    shown.fleet.publish();
    EXPECT_EQ(shown.painted(), 1U);
    shown.view().setDensity(Density::rings);
    EXPECT_GT(shown.painted(), 60U);
    (void)shown.painted();                    // the scroll bar has come
    shown.fleet.machine(8).figures[0] = 0.22; // now it is a number
    shown.fleet.publish();
    EXPECT_EQ(shown.painted(), 1U);
    shown.press(Qt::Key_Right);
    shown.press(Qt::Key_Right);
    EXPECT_LE(shown.painted(), 3U); // from one to the next
}

/// Nobody pays for machines that are out of sight, and each in sight is painted once.
TEST(Wall, PaintsWhatIsInSightOnce) {
    ShownWall shown(10'000, QSize(1920, 1080));
    const std::size_t before = shown.view().paintedCells();
    shown.view().viewport()->repaint();
    EXPECT_EQ(shown.view().paintedCells() - before, 10'000U);
    shown.view().setDensity(Density::cards);
    (void)shown.painted(); // the scroll bar comes
    shown.view().verticalScrollBar()->setValue(shown.view().verticalScrollBar()->maximum());
    EXPECT_LT(shown.painted(), 60U);
    EXPECT_FALSE(shown.view().cellOf(9'999).isEmpty());
    EXPECT_TRUE(shown.view().viewport()->rect().contains(shown.view().cellOf(9'999)));
}

TEST(Wall, HasNobodyAskedWhileNobodyLooks) {
    ShownWall shown(3);
    EXPECT_FALSE(shown.fleet.isAsking());
    shown.wall->setSeen(true);
    EXPECT_TRUE(shown.fleet.isAsking());
    shown.wall->setSeen(false);
    EXPECT_FALSE(shown.fleet.isAsking());
}

TEST(Wall, SaysHowItStands) {
    ShownWall shown(41);
    shown.fleet.machine(3).figures[2] = 0.97;
    shown.fleet.machine(5).downSince = std::chrono::system_clock::now();
    shown.fleet.publish();
    const std::string head = shown.wall->head().text().toStdString();
    for (const char* piece : {"prod", "40 of 41", "1 down", "1 red", "db00003 CPU 97%", "15 s average"}) {
        EXPECT_NE(head.find(piece), std::string::npos) << piece << " is not in " << head;
    }
}

} // namespace

} // namespace vantor::hosts::wall
