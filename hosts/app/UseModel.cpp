// SPDX-License-Identifier: MIT
#include "hosts/app/UseModel.hpp"

#include "hosts/qt/HostText.hpp"
#include "platform/core/PrintableText.hpp"

#include <algorithm>
#include <utility>

namespace vantor::hosts::app {

namespace {

int childCount(const UseRow& row) {
    return row.use ? static_cast<int>(row.use->processes.size()) : 0;
}

bool looksAlike(const UseRow& a, const UseRow& b) {
    return a.name == b.name && a.detail == b.detail && a.icon == b.icon && a.first == b.first &&
           a.second == b.second && a.tip == b.tip && a.canEnd == b.canEnd && a.kind == b.kind;
}

} // namespace

void UseModel::setHeadings(const QString& name, const QString& first, const QString& second) {
    m_headings[0] = name;
    m_headings[1] = first;
    m_headings[2] = second;
}

void UseModel::setRows(std::vector<UseRow> rows) {
    removeOthersThan(rows);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        place(static_cast<int>(i), std::move(rows[i]));
    }
}

void UseModel::removeOthersThan(const std::vector<UseRow>& rows) {
    for (int i = static_cast<int>(m_rows.size()) - 1; i >= 0; --i) {
        const std::string& key = m_rows[static_cast<std::size_t>(i)].row.key;
        if (std::ranges::find(rows, key, &UseRow::key) == rows.end()) {
            beginRemoveRows({}, i, i);
            m_rows.erase(m_rows.begin() + i);
            endRemoveRows();
        }
    }
}

/// Puts one row where it belongs; those before it are in place.
void UseModel::place(int at, UseRow row) {
    const auto begin = m_rows.begin() + at;
    const auto known =
        std::find_if(begin, m_rows.end(), [&row](const Kept& kept) { return kept.row.key == row.key; });
    if (known == m_rows.end()) {
        beginInsertRows({}, at, at);
        m_rows.insert(begin, Kept{++m_lastId, std::move(row)});
        endInsertRows();
        return;
    }
    if (known != begin) {
        const auto from = static_cast<int>(known - m_rows.begin());
        beginMoveRows({}, from, from, {}, at);
        std::rotate(begin, known, known + 1);
        endMoveRows();
    }
    replace(at, std::move(row));
}

/// Takes the row's processes as far as there are fewer or more of them.
void UseModel::resizeBehind(int at, UseRow& row) {
    UseRow& kept = m_rows[static_cast<std::size_t>(at)].row;
    const int before = childCount(kept), after = childCount(row);
    const QModelIndex above = index(at, 0);
    if (after < before) {
        beginRemoveRows(above, after, before - 1);
        kept.use->processes.resize(static_cast<std::size_t>(after));
        endRemoveRows();
    } else if (after > before) {
        beginInsertRows(above, before, after - 1);
        kept.use = row.use;
        endInsertRows();
    }
}

/// What is unfolded and selected below it stays at its place, whichever process is there now.
void UseModel::replace(int at, UseRow row) {
    resizeBehind(at, row);
    UseRow& kept = m_rows[static_cast<std::size_t>(at)].row;
    const bool alike = looksAlike(kept, row);
    const bool behindAlike =
        childCount(row) == 0 || (kept.figures == row.figures && kept.use->processes == row.use->processes);
    kept = std::move(row);
    const QModelIndex above = index(at, 0);
    if (!alike) {
        emit dataChanged(above, index(at, columns - 1));
    }
    if (!behindAlike) {
        emit dataChanged(index(0, 0, above), index(childCount(kept) - 1, columns - 1, above));
    }
}

std::vector<UseModel::Kept>::const_iterator UseModel::withId(quintptr id) const {
    return std::ranges::find(m_rows, id, &Kept::id);
}

const UseRow* UseModel::rowAt(const QModelIndex& index) const {
    if (!index.isValid()) {
        return nullptr;
    }
    if (index.internalId() != 0) {
        const auto above = withId(index.internalId());
        return above != m_rows.end() ? &above->row : nullptr;
    }
    const auto at = static_cast<std::size_t>(index.row());
    return at < m_rows.size() ? &m_rows[at].row : nullptr;
}

QModelIndex UseModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column < 0 || column >= columns || row >= rowCount(parent)) {
        return {};
    }
    return createIndex(row, column, parent.isValid() ? m_rows[static_cast<std::size_t>(parent.row())].id : 0);
}

QModelIndex UseModel::parent(const QModelIndex& child) const {
    if (!child.isValid() || child.internalId() == 0) {
        return {};
    }
    const auto above = withId(child.internalId());
    return above != m_rows.end() ? createIndex(static_cast<int>(above - m_rows.begin()), 0, quintptr(0))
                                 : QModelIndex();
}

int UseModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) {
        return static_cast<int>(m_rows.size());
    }
    return parent.internalId() == 0 && parent.column() == 0
               ? childCount(m_rows[static_cast<std::size_t>(parent.row())].row)
               : 0;
}

int UseModel::columnCount(const QModelIndex& /*parent*/) const {
    return columns;
}

/// A process chooses its name, so it is made printable here.
QVariant UseModel::processData(const UseRow& row, int child, int column) const {
    const auto at = static_cast<std::size_t>(child);
    if (column > 0) {
        const bool isKnown = at < row.figures.size();
        return !isKnown ? QString() : column == 1 ? row.figures[at].first : row.figures[at].second;
    }
    const platform::ProcessIdentity& process = row.use->processes.at(at);
    return QString::fromStdString(platform::printableText(process.name)) + QStringLiteral("  ·  ") +
           QString::number(process.number);
}

QVariant UseModel::data(const QModelIndex& index, int role) const {
    const UseRow* const row = rowAt(index);
    if (row != nullptr && role == Qt::ToolTipRole && index.internalId() == 0 && index.column() == 1) {
        return row->tip;
    }
    if (row == nullptr || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) {
        return {};
    }
    if (index.internalId() != 0) {
        return processData(*row, index.row(), index.column());
    }
    if (index.column() == 0) {
        const bool isSpoken = role == Qt::AccessibleTextRole && !row->detail.isEmpty();
        return isSpoken ? qt::valueText(row->name.toStdString(), row->detail.toStdString()) : row->name;
    }
    return index.column() == 1 ? row->first : row->second;
}

QVariant UseModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool isHeading = orientation == Qt::Horizontal && role == Qt::DisplayRole;
    return isHeading && section >= 0 && section < columns ? m_headings[section] : QVariant();
}

} // namespace vantor::hosts::app
