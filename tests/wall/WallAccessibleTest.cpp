// SPDX-License-Identifier: MIT
#include "MadeUpFleet.hpp"

#include <QAccessible>

namespace vantor::hosts::wall {

namespace {

using tests::ShownWall;

/// Every key of the line below the wall.
TEST(WallKeys, LeadFromMachineToMachine) {
    ShownWall shown(41);
    std::string opened;
    shown.view().setOpenHandler([&](const platform::FleetMachine& machine) { opened = machine.name; });
    shown.press(Qt::Key_Right); // takes the first one up
    EXPECT_EQ(shown.nameAtCursor(), "db00000");
    shown.press(Qt::Key_Right);
    EXPECT_EQ(shown.nameAtCursor(), "db00001");
    shown.press(Qt::Key_End);
    EXPECT_EQ(shown.nameAtCursor(), "web00040");
    shown.press(Qt::Key_Return);
    EXPECT_EQ(opened, "web00040");
    shown.fleet.machine(15).figures[1] = 0.95;
    shown.fleet.publish();
    shown.press(Qt::Key_S); // at once, and the cursor stays with its machine
    EXPECT_EQ(shown.wall->table().rows().front().machine->name, "db00015");
    EXPECT_EQ(shown.nameAtCursor(), "web00040");
    shown.press(Qt::Key_N);
    EXPECT_EQ(shown.wall->table().order(), fleet::FleetOrder::name);
    const Density before = shown.view().density();
    shown.press(Qt::Key_Minus);
    EXPECT_GT(shown.view().density(), before);
}

TEST(WallKeys, FoldAndFilterAndSort) {
    ShownWall shown(41);
    shown.wall->groupBy("role");
    shown.press(Qt::Key_Home);
    shown.press(Qt::Key_End);
    const std::size_t row = *shown.view().cursor();
    shown.press(Qt::Key_Space);
    EXPECT_TRUE(shown.view().cellOf(row).isEmpty());
    EXPECT_EQ(shown.nameAtCursor(), "web00040");
    shown.press(Qt::Key_Up); // past the folded ones, and back to their line
    EXPECT_LT(*shown.view().cursor(), 20U);
    shown.press(Qt::Key_End);
    EXPECT_EQ(shown.nameAtCursor(), "web00020");
    shown.press(Qt::Key_Space);
    EXPECT_FALSE(shown.view().cellOf(row).isEmpty());

    shown.press(Qt::Key_Slash);
    QTest::keyClicks(&shown.wall->filter(), "WEB0003");
    EXPECT_EQ(shown.wall->table().rows().size(), 10U);
    shown.press(Qt::Key_Return); // to the machines that are left
    EXPECT_TRUE(shown.view().hasFocus());
    shown.press(Qt::Key_Escape);
    EXPECT_EQ(shown.wall->table().rows().size(), 41U);
    shown.press(Qt::Key_Slash);
    QTest::keyClicks(&shown.wall->filter(), "nowhere");
    shown.press(Qt::Key_Return);
    shown.press(Qt::Key_Return); // nobody is left to open
    shown.press(Qt::Key_Escape);

    using fleet::FleetOrder;
    for (const auto& [key, order] :
         {std::pair(Qt::Key_R, FleetOrder::memory), std::pair(Qt::Key_C, FleetOrder::processor),
          std::pair(Qt::Key_T, FleetOrder::network), std::pair(Qt::Key_W, FleetOrder::worst),
          std::pair(Qt::Key_P, FleetOrder::processor)}) {
        shown.press(key);
        EXPECT_EQ(shown.wall->table().order(), order) << key;
    }
}

/// The pointer: a click selects, a second one opens, a heading folds; the card tells all of a machine.
TEST(WallPointer, SelectsOpensAndTells) {
    ShownWall shown(2000);
    shown.wall->groupBy("role");
    std::string opened;
    shown.view().setOpenHandler([&](const platform::FleetMachine& machine) { opened = machine.name; });
    QWidget* const target = shown.view().viewport();
    const QPoint at = shown.view().cellOf(7).center();
    QTest::mouseClick(target, Qt::LeftButton, {}, at);
    EXPECT_EQ(shown.nameAtCursor(), "db00007");
    QTest::mouseDClick(target, Qt::LeftButton, {}, at);
    EXPECT_EQ(opened, "db00007");

    shown.fleet.machine(8).downSince = std::chrono::system_clock::now();
    shown.fleet.machine(8).problem = "connection refused";
    shown.fleet.publish();
    shown.press(Qt::Key_Right);
    ASSERT_TRUE(shown.view().tip().isVisible());
    const std::string told = shown.view().tip().text().toStdString();
    for (const char* piece : {"db00008", "/srv", "30%", "connection refused", "role=db"}) {
        EXPECT_NE(told.find(piece), std::string::npos) << piece << " is not in " << told;
    }
    QTest::mouseClick(target, Qt::LeftButton, {}, QPoint(60, 20)); // the first group's line
    EXPECT_TRUE(shown.wall->table().groups().front().isFolded);
}

/// A table of all machines, of which only those become objects that somebody asks for.
TEST(WallForScreenReaders, IsATable) {
    ShownWall shown(10'000);
    shown.fleet.machine(0).figures[0] = 0.97;
    shown.fleet.machine(0).figures[2] = std::nullopt;
    shown.fleet.publish();
    QAccessibleInterface* const wall = QAccessible::queryAccessibleInterface(&shown.view());
    ASSERT_NE(wall, nullptr);
    EXPECT_EQ(wall->role(), QAccessible::Table);
    QAccessibleTableInterface* const table = wall->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 10'000);
    ASSERT_EQ(table->columnCount(), 7);
    EXPECT_EQ(table->columnDescription(2), "RAM");
    const auto text = [&](int row, int column) {
        return table->cellAt(row, column)->text(QAccessible::Name).toStdString();
    };
    EXPECT_EQ(text(0, 0), "db00000");
    EXPECT_EQ(text(0, 1), "red");
    EXPECT_EQ(text(0, 2), "97%");
    EXPECT_EQ(text(0, 3), "/srv 30%");
    EXPECT_EQ(text(0, 4), "\u2013");
    EXPECT_EQ(table->cellAt(10'000, 0), nullptr);
    EXPECT_TRUE(table->selectRow(9'999)); // which brings it into sight
    EXPECT_TRUE(table->isRowSelected(9'999));
    QAccessibleInterface* const last = table->cellAt(9'999, 0);
    EXPECT_TRUE(last->tableCellInterface()->isSelected());
    EXPECT_FALSE(last->state().offscreen);
    EXPECT_EQ(wall->indexOfChild(last), 9'999 * 7);
    EXPECT_EQ(wall->childAt(last->rect().center().x(), last->rect().center().y()), last);
}

} // namespace

} // namespace vantor::hosts::wall
