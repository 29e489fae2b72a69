// SPDX-License-Identifier: MIT
#include "hosts/app/ProcessorPane.hpp"

#include "hosts/app/Card.hpp"
#include "hosts/app/UseRows.hpp"
#include "hosts/app/Words.hpp"
#include "hosts/qt/HostText.hpp"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

namespace vantor::hosts::app {

namespace {

UseRow rowOf(const ProcessorShare& share, const Unfolded& behind) {
    UseRow row = applicationRow(share.use, behind, [](const ProcessRow& process) {
        return std::pair(process.percent ? shareOf(*process.percent, 1) : QStringLiteral("–"),
                         durationText(process.use.processorTime));
    });
    row.first = shareOf(share.shown, 1);
    row.second = durationText(share.use.processorTime);
    row.tip = qt::hostText("app_CORES", "n", numberText(share.cores, 1).toStdString());
    row.amount = share.shown;
    return row;
}

UseRow summaryOfShares(const std::vector<UseRow>& hidden) {
    double percent = 0;
    std::uint64_t time = 0;
    for (const UseRow& row : hidden) {
        percent += row.amount;
        time += row.use ? row.use->processorTime : 0;
    }
    UseRow more = moreRow(hidden.size());
    more.first = shareOf(percent, 1);
    more.second = durationText(time);
    return more;
}

QVBoxLayout* insideOf(Card& card) {
    auto* const inside = new QVBoxLayout(&card);
    inside->setContentsMargins(Grid::margin, 10, Grid::margin, 10);
    return inside;
}

} // namespace

ProcessorPane::ProcessorPane(std::shared_ptr<ArcChartViewModel> model, bool useTheme)
    : m_head(new PageHead(std::move(model), qt::hostText("app_BUSY"))),
      m_sparkline(new Sparkline),
      m_bars(new ProcessorBars),
      m_list(new UseList(qt::hostText("app_NOWHEAD"), qt::hostText("app_SINCESTART"), useTheme,
                         summaryOfShares)) {
    auto* const averages = new QGridLayout;
    averages->setHorizontalSpacing(Grid::gap);
    averages->setVerticalSpacing(1);
    m_load = addAverages(*averages, "app_LOAD", {"app_1MIN", "app_5MIN", "app_15MIN"});
    averages->setRowMinimumHeight(2, 6);
    m_pressure = addAverages(*averages, "app_PRESSURE", {"app_10S", "app_1MIN", "app_5MIN"});
    m_head->addBeside(averages);

    auto* const top = new Card;
    insideOf(*top)->addWidget(m_head);
    top->layout()->setContentsMargins(Grid::margin, Grid::margin, Grid::margin, Grid::gap);
    auto* const first = new Card;
    insideOf(*first)->addWidget(m_sparkline);
    auto* const second = new Card;
    insideOf(*second)->addWidget(m_bars);
    auto* const line = new QHBoxLayout;
    line->setSpacing(Grid::gap);
    line->addWidget(first, 1);
    line->addWidget(second);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Grid::gap);
    column->addWidget(top);
    column->addLayout(line);
    column->addWidget(m_list);
    column->addStretch();
}

ProcessorPane::Averages ProcessorPane::addAverages(QGridLayout& grid, const char* name,
                                                   const std::array<const char*, 3>& spans) {
    const int row = grid.rowCount() <= 1 ? 0 : grid.rowCount();
    Averages averages;
    averages.name = new Text(TextSize::label, Ink::secondary);
    averages.name->setText(qt::hostText(name));
    grid.addWidget(averages.name, row + 1, 0);
    for (std::size_t i = 0; i < spans.size(); ++i) {
        averages.spans.at(i) = (new Text(TextSize::caption, Ink::secondary))->atEnd();
        averages.spans.at(i)->setText(qt::hostText(spans.at(i)));
        averages.figures.at(i) = (new Text(TextSize::label))->atEnd();
        grid.addWidget(averages.spans.at(i), row, static_cast<int>(i) + 1);
        grid.addWidget(averages.figures.at(i), row + 1, static_cast<int>(i) + 1);
    }
    return averages;
}

/// What the kernel does not tell is not there.
void ProcessorPane::displayAverages(const Averages& averages,
                                    const std::optional<std::array<QString, 3>>& texts) {
    averages.name->setVisible(texts.has_value());
    for (std::size_t i = 0; i < averages.figures.size(); ++i) {
        averages.spans.at(i)->setVisible(texts.has_value());
        averages.figures.at(i)->setVisible(texts.has_value());
        if (texts) {
            averages.figures.at(i)->display(texts->at(i));
        }
    }
}

void ProcessorPane::displayState(const ProcessorPage& page) {
    std::optional<std::array<QString, 3>> loads;
    if (page.state.loads) {
        loads = {numberText(page.state.loads->at(0), 2), numberText(page.state.loads->at(1), 2),
                 numberText(page.state.loads->at(2), 2)};
    }
    displayAverages(m_load, loads);
    std::optional<std::array<QString, 3>> pressure;
    if (page.pressure) {
        pressure = {shareOf(page.pressure->average10, 1), shareOf(page.pressure->average60, 1),
                    shareOf(page.pressure->average300, 1)};
    }
    displayAverages(m_pressure, pressure);
    QStringList state;
    if (page.state.hertz) {
        constexpr double giga = 1e9;
        state << qt::hostText("app_GIGAHERTZ", "n", numberText(*page.state.hertz / giga, 1).toStdString());
    }
    if (page.state.celsius) {
        state << isolated(qt::hostText("app_CELSIUS", "n", numberText(*page.state.celsius, 0).toStdString()));
    }
    m_head->showSentence(state.join(QStringLiteral(" · ")));
}

void ProcessorPane::displayBusy(double percent, std::size_t processors) {
    const auto count = static_cast<double>(processors);
    m_head->showFigure(numberText(percent / 100 * count, 1),
                       qt::hostText(processors == 1 ? "app_OFONEPROCESSOR" : "app_OFPROCESSORS", "n",
                                    numberText(count, 0).toStdString()));
}

void ProcessorPane::displayStart(const ProcessorPage& page, const std::vector<CpuUsage>& minute) {
    if (!minute.empty()) {
        displayBusy(100 - minute.back().idle, page.processors.size());
    }
    displayState(page);
    m_bars->setProcessors(page.processors);
    m_list->display({}, {}); // rows of a visit before are not of now
}

void ProcessorPane::display(const ProcessorPage& page, const Unfolded& behind) {
    displayBusy(page.busy(), page.processors.size());
    displayState(page);
    m_bars->setProcessors(page.processors);
    displayApplications(page, behind);
}

void ProcessorPane::displayApplications(const ProcessorPage& page, const Unfolded& behind) {
    std::vector<UseRow> applications;
    std::vector<UseRow> rest;
    for (const ProcessorShare& share : page.applications) {
        (share.use.isService ? rest : applications).push_back(rowOf(share, behind));
    }
    UseRow others = othersRow();
    others.first = shareOf(page.othersShown, 1);
    rest.push_back(std::move(others));
    m_list->display(std::move(applications), std::move(rest));
}

} // namespace vantor::hosts::app
