// SPDX-License-Identifier: MIT
#include "hosts/wall/WallWords.hpp"

#include "fleet/FleetWords.hpp"
#include "hosts/qt/HostText.hpp"
#include "platform/foundation/CountText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <cmath>

namespace vantor::hosts::wall {

using fleet::Band;
using platform::FleetFigure;

namespace {

constexpr auto between = " \u00B7 ";

QString joined(const QString& first, const QString& second) {
    return first.isEmpty() || second.isEmpty() ? first + second : first + QString::fromUtf8(between) + second;
}

const char* stateKey(Band band) {
    switch (band) {
    case Band::red:
        return "wall_STATERED";
    case Band::orange:
        return "wall_STATEORANGE";
    case Band::yellow:
        return "wall_STATEYELLOW";
    case Band::green:
        return "wall_STATEGREEN";
    case Band::unknown:
        return "wall_STATEUNKNOWN";
    case Band::neutral:
    case Band::down:
    case Band::stale:
        break;
    }
    return nullptr;
}

} // namespace

QString isolated(const std::string& text) {
    constexpr char16_t begin = 0x2066, end = 0x2069;
    const QString plain = QString::fromStdString(text);
    return qt::isRightToLeft() ? QChar(begin) + plain + QChar(end) : plain;
}

QString countText(std::size_t count) {
    return QString::fromStdString(platform::countText(count));
}

QString figureName(FleetFigure figure) {
    return QString::fromStdString(fleet::figureName(figure));
}

QString figureWord(FleetFigure figure) {
    switch (figure) {
    case FleetFigure::received:
        return qt::hostText("home_DATARECEIVED");
    case FleetFigure::sent:
        return qt::hostText("home_DATASENT");
    case FleetFigure::memory:
    case FleetFigure::storage:
    case FleetFigure::processor:
        break;
    }
    return figureName(figure);
}

QString figureText(FleetFigure figure, const std::optional<double>& value) {
    return isolated(fleet::figureText(figure, value));
}

QString stateText(const fleet::FleetRow& row) {
    const QString note = QString::fromStdString(fleet::noteText(row));
    if (row.band == Band::down && !row.machine->problem.empty()) {
        return qt::isRightToLeft() ? joined(note, isolated(row.machine->problem))
                                   : note + QStringLiteral(": ") + isolated(row.machine->problem);
    }
    const char* const key = stateKey(row.band);
    return key != nullptr ? qt::hostText(key) : note;
}

QString momentText(const platform::FleetSnapshot& snapshot, const fleet::FleetRow& row,
                   std::chrono::nanoseconds now) {
    if (row.band == Band::down || !row.machine->taken) {
        return QString::fromStdString(fleet::noteText(row));
    }
    platform::FleetSnapshot own; // as if its source told of nothing else
    own.sources.push_back(snapshot.sources.at(row.machine->source));
    own.sources.back().answered = row.machine->taken;
    own.sources.back().isSilent = false;
    return QString::fromStdString(fleet::averageText(own, now));
}

QString hintText(const fleet::FleetGroup& group, bool isWorst) {
    QString opens = qt::hostText("wall_ENTEROPENS");
    if (!isWorst || group.size < 2 || group.name.empty()) {
        return opens;
    }
    const std::string text = qt::hostText("wall_WORSTOF", "n", platform::countText(group.size)).toStdString();
    return joined(QString::fromStdString(platform::textWithValue(text, "group", group.name)), opens);
}

QString ringsText() {
    QString figures;
    for (const FleetFigure figure : {FleetFigure::memory, FleetFigure::storage, FleetFigure::processor}) {
        figures = joined(figures, figureName(figure));
    }
    return qt::hostText("wall_RINGS", "figures", figures.toStdString());
}

QString colorText(fleet::FleetOrder order) {
    using fleet::FleetOrder;
    QString figure = qt::hostText("wall_WORSTFIGURE");
    if (order == FleetOrder::memory) {
        figure = figureName(FleetFigure::memory);
    } else if (order == FleetOrder::storage) {
        figure = figureName(FleetFigure::storage);
    } else if (order == FleetOrder::processor) {
        figure = figureName(FleetFigure::processor);
    } else if (order == FleetOrder::network) {
        return {}; // which has no level
    }
    return qt::hostText("wall_COLOR", "figure", figure.toStdString());
}

} // namespace vantor::hosts::wall
