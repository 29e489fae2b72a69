// SPDX-License-Identifier: MIT
#include "hosts/app/UseModel.hpp"
#include "hosts/app/UseTree.hpp"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <algorithm>
#include <numeric>
#include <random>

namespace vantor::hosts::app {

namespace {

UseRow row(int number, std::size_t processes) {
    UseRow one;
    one.key = std::to_string(number);
    one.name = QString::number(number);
    one.use.emplace();
    for (std::size_t i = 0; i < processes; ++i) {
        one.use->processes.push_back({number * 100 + static_cast<int>(i), 1, "p"});
    }
    return one;
}

/// Rows come, go, move and change their processes, as on a machine at work.
TEST(UseModel, KeepsToTheRulesOfItsKindThroughAnyChange) {
    UseModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    std::mt19937 random(1);
    std::vector<int> numbers(12);
    for (int round = 0; round < 200; ++round) {
        std::iota(numbers.begin(), numbers.end(), 0);
        std::shuffle(numbers.begin(), numbers.end(), random);
        std::vector<UseRow> rows;
        for (std::size_t i = 0; i < random() % numbers.size(); ++i) {
            rows.push_back(row(numbers[i], random() % 4));
        }
        std::vector<QString> names;
        for (const UseRow& each : rows) {
            names.push_back(each.name);
        }
        model.setRows(std::move(rows));
        ASSERT_EQ(model.rowCount(), static_cast<int>(names.size()));
        for (int i = 0; i < model.rowCount(); ++i) {
            EXPECT_EQ(model.index(i, 0).data().toString(), names[static_cast<std::size_t>(i)]);
        }
    }
}

TEST(UseTree, FollowsTheSelectedApplicationWhereverItGoes) {
    UseModel model;
    UseTree tree(model, false);
    model.setRows({row(1, 2), row(2, 1), row(3, 3)});
    tree.setCurrentIndex(model.index(2, 0));
    tree.expand(model.index(2, 0));
    model.setRows({row(3, 2), row(1, 2)});
    ASSERT_TRUE(tree.currentIndex().isValid());
    EXPECT_EQ(model.rowAt(tree.currentIndex())->key, "3");
    EXPECT_TRUE(tree.isExpanded(model.index(0, 0)));
    model.setRows({row(1, 2)});
    EXPECT_TRUE(model.rowAt(tree.currentIndex()) == nullptr ||
                model.rowAt(tree.currentIndex())->key != "3"); // never somebody else's End
}

} // namespace

} // namespace vantor::hosts::app
