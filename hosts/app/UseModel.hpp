// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Workload.hpp"

#include <QAbstractItemModel>
#include <QString>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor::hosts::app {

enum class UseRowKind : std::uint8_t {
    application,
    rest, ///< what no application holds, or several small ones together
    more, ///< the small ones, and the way to see them
};

/// One line of a list of applications.
struct UseRow {
    UseRowKind kind = UseRowKind::application;
    std::string key = {}; ///< the same in the next list for the same application
    QString name = {};
    QString detail = {}; ///< "14 processes"
    QString icon = {};
    QString first = {}; ///< the two figures
    QString second = {};
    QString tip = {};  ///< what the first figure means
    double amount = 0; ///< the first figure, for a sum
    bool canEnd = false;
    std::optional<platform::ApplicationUse> use = {}; ///< of an application
    /// The two figures of each of its processes; none before it is unfolded.
    std::vector<std::pair<QString, QString>> figures = {};
};

/// Applications with two figures each, and their processes below them. A new list changes what differs: what
/// is selected or unfolded stays so, wherever it has moved.
class UseModel final : public QAbstractItemModel {
    Q_OBJECT

public:
    static constexpr int columns = 3;

    using QAbstractItemModel::QAbstractItemModel;

    void setHeadings(const QString& name, const QString& first, const QString& second);
    void setRows(std::vector<UseRow> rows);
    /// The row that an index, or the index above it, stands for; null for none.
    [[nodiscard]] const UseRow* rowAt(const QModelIndex& index) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Kept {
        quintptr id = 0; ///< of the indices below it; those at the top have 0
        UseRow row;
    };
    [[nodiscard]] std::vector<Kept>::const_iterator withId(quintptr id) const;
    void removeOthersThan(const std::vector<UseRow>& rows);
    void place(int at, UseRow row);
    void replace(int at, UseRow row);
    void resizeBehind(int at, UseRow& row);
    [[nodiscard]] QVariant processData(const UseRow& row, int child, int column) const;

    std::vector<Kept> m_rows;
    quintptr m_lastId = 0;
    QString m_headings[columns];
};

} // namespace vantor::hosts::app
