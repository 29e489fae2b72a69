// SPDX-License-Identifier: MIT
#include "hosts/app/MemoryPane.hpp"

#include "hosts/app/Card.hpp"
#include "hosts/app/UseRows.hpp"
#include "hosts/app/Words.hpp"
#include "hosts/qt/HostText.hpp"
#include "pages/PageWords.hpp"

#include <QGridLayout>
#include <QVBoxLayout>
#include <array>
#include <utility>

namespace vantor::hosts::app {

using platform::ApplicationUse;

namespace {

/// How a part of the memory is called and shown.
struct PartLook {
    const char* key;
    std::size_t color;
    bool isHatched;
};

PartLook lookOf(MemoryPartKind kind) {
    switch (kind) {
    case MemoryPartKind::applications:
        return {"app_APPLICATIONS", 0, false};
    case MemoryPartKind::kernel:
        return {"app_KERNEL", 1, false};
    case MemoryPartKind::compressed:
        return {"app_COMPRESSED", 0, true};
    case MemoryPartKind::inactive:
        return {"app_INACTIVE", 1, true};
    case MemoryPartKind::cache:
        return {"app_CACHE", 2, false};
    case MemoryPartKind::free:
        break;
    }
    return {"app_FREE", 3, false};
}

std::int64_t bytesOf(std::uint64_t bytes) {
    return static_cast<std::int64_t>(bytes);
}

UseRow rowOf(const ApplicationUse& use, const Unfolded& behind) {
    UseRow row = applicationRow(use, behind, [](const ProcessRow& process) {
        return std::pair(memorySize(bytesOf(process.use.memory)), memorySize(bytesOf(process.use.swap)));
    });
    if (const auto found = behind.find(row.key); found != behind.end() && found->second.peak) {
        row.tip = qt::hostText("app_PEAK", "size", memorySize(bytesOf(*found->second.peak)).toStdString());
    }
    row.first = memorySize(bytesOf(use.memory));
    row.second = memorySize(bytesOf(use.swap));
    return row;
}

UseRow summaryOf(const std::vector<UseRow>& hidden) {
    std::uint64_t memory = 0;
    std::uint64_t swap = 0;
    for (const UseRow& row : hidden) {
        memory += row.use ? row.use->memory : 0;
        swap += row.use ? row.use->swap : 0;
    }
    UseRow more = moreRow(hidden.size());
    more.first = memorySize(bytesOf(memory));
    more.second = memorySize(bytesOf(swap));
    return more;
}

} // namespace

MemoryPane::MemoryPane(std::shared_ptr<ArcChartViewModel> model, bool useTheme, std::function<void()> changed,
                       Pace pace)
    : m_head(new PageHead(std::move(model), qt::hostText("app_AVAILABLE"))),
      m_swap(new Text(TextSize::label, Ink::secondary)),
      m_swapFigure((new Text(TextSize::label))->atEnd()),
      m_bar(new PartsBar),
      m_freeUp(new FreeUpRow(std::move(changed), std::move(pace))),
      m_list(new UseList(qt::hostText("host_MEMORY"), qt::hostText("app_SWAP"), useTheme, summaryOf)) {
    m_swap->setText(qt::hostText("app_SWAP"));
    auto* const beside = new QGridLayout;
    beside->setHorizontalSpacing(Grid::gap);
    beside->addWidget(m_swap, 0, 0, Qt::AlignTop);
    beside->addWidget(m_swapFigure, 0, 1, Qt::AlignTop);
    m_head->addAtEnd(beside);
    auto* const card = new Card;
    auto* const inside = new QVBoxLayout(card);
    inside->setContentsMargins(Grid::margin, Grid::margin, Grid::margin, Grid::gap);
    inside->setSpacing(Grid::gap);
    inside->addWidget(m_head);
    inside->addWidget(m_bar);
    inside->addWidget(new Rule);
    inside->addWidget(m_freeUp);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Grid::gap);
    column->addWidget(card);
    column->addWidget(m_list);
    column->addStretch();
}

void MemoryPane::display(const MemoryPage& page, const Unfolded& behind) {
    m_head->showFigure(memorySize(page.available),
                       qt::hostText("host_OFTOTAL", "size", memorySize(page.total).toStdString()));
    m_head->showSentence(QString::fromStdString(pressureWords(page.pressure, WaitedFor::memory)));
    std::vector<BarPart> parts;
    for (const MemoryPart& part : page.parts) {
        const PartLook look = lookOf(part.kind);
        if (part.bytes > 0) {
            parts.push_back({qt::hostText(look.key), memorySize(part.bytes),
                             static_cast<double>(part.bytes) / static_cast<double>(page.total), look.color,
                             look.isHatched});
        }
    }
    m_bar->setParts(std::move(parts));
    showSwap(page);
    showApplications(page, behind);
}

void MemoryPane::showSwap(const MemoryPage& page) {
    if (!page.swap || page.swap->total == 0) {
        m_swapFigure->display(qt::hostText("app_NOSWAP"));
        return;
    }
    const std::uint64_t used = page.swap->total - page.swap->free;
    m_swapFigure->display(filled("app_PARTOF", "part", memorySize(bytesOf(used)), "whole",
                                 memorySize(bytesOf(page.swap->total))));
}

void MemoryPane::showApplications(const MemoryPage& page, const Unfolded& behind) {
    std::vector<UseRow> applications;
    std::vector<UseRow> rest;
    for (const ApplicationUse& use : page.applications) {
        (use.isService ? rest : applications).push_back(rowOf(use, behind));
    }
    if (page.others > 0) {
        UseRow others = othersRow();
        others.first = memorySize(page.others);
        rest.push_back(std::move(others));
    }
    m_list->display(std::move(applications), std::move(rest));
}

} // namespace vantor::hosts::app
