// SPDX-License-Identifier: MIT
#include "hosts/app/StoragePane.hpp"

#include "hosts/app/Card.hpp"
#include "hosts/app/StorageWords.hpp"
#include "hosts/app/Words.hpp"
#include "hosts/qt/HostText.hpp"
#include "pages/CacheText.hpp"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

namespace vantor::hosts::app {

using platform::CacheItem;

namespace {

constexpr std::size_t mostKept = 8; // rows of caches that are not offered

BarPart part(const char* key, std::int64_t bytes, std::int64_t total, std::size_t color) {
    return {qt::hostText(key), storageSize(bytes), static_cast<double>(bytes) / static_cast<double>(total),
            color};
}

} // namespace

StoragePane::StoragePane(std::shared_ptr<ArcChartViewModel> model, std::function<void()> changed,
                         std::function<std::int64_t()> now)
    : m_changed(std::move(changed)),
      m_work(std::move(now)),
      m_head(new PageHead(std::move(model), qt::hostText("app_FREE"))),
      m_bar(new PartsBar),
      m_rows(new QVBoxLayout),
      m_foot(new QWidget),
      m_result((new Text(TextSize::label, Ink::secondary))->wrapped()),
      m_release(new ActionButton(ButtonSize::large)) {
    auto* const top = new Card;
    auto* const inside = new QVBoxLayout(top);
    inside->setContentsMargins(Grid::margin, Grid::margin, Grid::margin, Grid::gap);
    inside->setSpacing(Grid::gap);
    inside->addWidget(m_head);
    inside->addWidget(m_bar);
    m_rows->setSpacing(0);
    auto* const foot = new QHBoxLayout(m_foot);
    foot->setContentsMargins(0, Grid::unit, 0, Grid::unit);
    foot->setSpacing(Grid::gap);
    foot->addWidget(m_result, 1);
    foot->addWidget(m_release);
    m_release->hide();
    m_result->setText(qt::hostText("app_COUNTING"));
    auto* const list = new Card;
    auto* const listed = new QVBoxLayout(list);
    listed->setContentsMargins(Grid::margin, Grid::unit, Grid::margin, Grid::unit);
    listed->setSpacing(0);
    listed->addLayout(m_rows);
    listed->addWidget(m_foot);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Grid::gap);
    column->addWidget(top);
    column->addWidget(list);
    column->addStretch();
    connect(m_release, &QAbstractButton::clicked, this, [this] { askForCaches(); });
}

void StoragePane::follow(bool on) {
    if (!on) {
        if (m_sheet == nullptr) {
            m_work.stop();
        }
        return;
    }
    m_work.count([this](const std::optional<StoragePage>& page) {
        if (page) {
            display(*page);
        }
    });
}

void StoragePane::displayHead(const VolumeFigures& figures) {
    m_head->showFigure(storageSize(figures.available),
                       qt::hostText("host_OFTOTAL", "size", storageSize(figures.total).toStdString()));
    m_head->showSentence(figures.releasable > 0 ? qt::hostText("app_COULDBERELEASED", "size",
                                                               storageSize(figures.releasable).toStdString())
                                                : qt::hostText("app_NOTHINGRELEASABLE"));
    m_bar->setParts({part("app_USED", figures.used, figures.total, 0),
                     part("home_RELEASABLESPACE", figures.releasable, figures.total, 1),
                     part("app_FREE", figures.available, figures.total, 3)});
}

void StoragePane::addRow(StorageRow* row) {
    if (m_rows->count() > 0) {
        auto* const rule = new Rule;
        rule->setLook(m_look);
        m_rows->addWidget(rule);
    }
    m_rows->addWidget(row);
    applyLook(*row, m_look);
}

void StoragePane::display(const StoragePage& page) {
    m_isCounted = true;
    m_trash = nullptr;
    m_ticks.clear();
    while (QLayoutItem* const item = m_rows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    displayHead(page.figures);
    addTrash(page);
    std::size_t kept = 0;
    std::int64_t small = 0;
    for (const CacheRow& row : page.caches) {
        const bool isListed = row.item.kind != platform::CacheKind::kept || ++kept <= mostKept;
        small += isListed ? 0 : static_cast<std::int64_t>(row.item.bytes);
        if (isListed) {
            addCache(row);
        }
    }
    if (small > 0) {
        addRow(new StorageRow(
            qt::hostText("app_MORE", "n", numberText(static_cast<double>(kept - mostKept), 0).toStdString()),
            {}, storageSize(small), true));
    }
    if (page.rest != 0) {
        addRow(new StorageRow(QString::fromStdString(storageRestName(page.rest)),
                              qt::hostText("app_RESTTEXT"), storageSize(page.rest), true));
    }
    for (const platform::SystemCache& cache : page.system) {
        addSystem(cache);
    }
    orderKeys();
    showSelection();
}

/// Rows come anew, and yet before the button below them: for Tab and for screen readers.
void StoragePane::orderKeys() {
    m_foot->raise();
    QWidget* before = nullptr;
    for (QAbstractButton* const button : m_foot->parentWidget()->findChildren<QAbstractButton*>()) {
        if (before != nullptr) {
            setTabOrder(before, button);
        }
        before = button;
    }
}

void StoragePane::addTrash(const StoragePage& page) {
    auto* const row = new StorageRow(qt::hostText("storage_TRASH"), qt::hostText("app_TRASHTEXT"),
                                     storageSize(page.trash), false);
    row->addTrashSign();
    m_trash = &row->addButton(qt::hostText("app_EMPTY"), ButtonRole::destructive);
    connect(m_trash, &QAbstractButton::clicked, this, [this] { askForTrash(); });
    addRow(row);
}

void StoragePane::addCache(const CacheRow& cache) {
    const CacheItem& item = cache.item;
    auto* const row =
        new StorageRow(QString::fromStdString(cacheName(item)), QString::fromStdString(cacheSentence(item)),
                       storageSize(static_cast<std::int64_t>(item.bytes)), !item.isReleasable());
    if (item.isReleasable()) {
        Tick& tick = row->addTick(cache.isSuggested);
        connect(&tick, &QAbstractButton::toggled, this, [this] {
            m_hasResult = false;
            showSelection();
        });
        m_ticks.emplace_back(&tick, item);
    } else if (!item.folder.empty()) {
        ActionButton& open = row->addButton(qt::hostText("app_OPENFOLDER"));
        connect(&open, &QAbstractButton::clicked, this, [folder = item.folder] {
            QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(folder)));
        });
    }
    addRow(row);
}

void StoragePane::addSystem(const platform::SystemCache& cache) {
    const QString command = QString::fromStdString(cache.command);
    QString shown = command;
    shown.replace(QLatin1Char('-'), QStringLiteral("-\u2060")); // no option is broken over two lines
    auto* const row = new StorageRow(
        QString::fromStdString(systemCacheName(cache)),
        qt::hostText("app_NEEDSROOT", "command", shown.toStdString()),
        cache.bytes ? storageSize(static_cast<std::int64_t>(*cache.bytes)) : QStringLiteral("–"), true);
    ActionButton& copy = row->addButton(qt::hostText("app_COPY"));
    connect(&copy, &QAbstractButton::clicked, this, [&copy, command] {
        QGuiApplication::clipboard()->setText(command);
        copy.setText(qt::hostText("app_COPIED"));
    });
    addRow(row);
}

std::vector<CacheItem> StoragePane::selected() const {
    std::vector<CacheItem> items;
    for (const auto& [tick, item] : m_ticks) {
        if (tick->isChecked()) {
            items.push_back(item);
        }
    }
    return items;
}

void StoragePane::showSelection() {
    std::int64_t bytes = 0;
    const std::vector<CacheItem> items = selected();
    for (const CacheItem& item : items) {
        bytes += static_cast<std::int64_t>(item.bytes);
    }
    m_foot->setVisible(!m_ticks.empty() || m_hasResult);
    m_release->setVisible(!m_ticks.empty());
    m_release->setEnabled(!items.empty());
    m_release->setText(items.empty() ? qt::hostText("app_RELEASENOTHING")
                                     : qt::hostText("app_RELEASE", "size", storageSize(bytes).toStdString()));
    m_release->updateGeometry();
    if (!m_hasResult) {
        const auto count = [](std::size_t number) { return numberText(static_cast<double>(number), 0); };
        m_result->display(m_ticks.empty() ? QString()
                                          : filled("app_SELECTED", "n", count(items.size()), "total",
                                                   count(m_ticks.size())));
    }
}

void StoragePane::askForTrash() {
    m_work.listTrash([this](const Listing& listing) { ask(qt::hostText("app_EMPTYTITLE"), listing); });
}

void StoragePane::askForCaches() {
    ask(qt::hostText("app_RELEASETITLE"), StorageWork::listOf(selected()));
}

void StoragePane::ask(const QString& title, const Listing& listing) {
    m_sheet = new Sheet(this);
    m_sheet->setTitle(title);
    QStringList lines;
    for (const std::string& line : listing.lines) {
        lines << QString::fromStdString(line);
    }
    m_sheet->setList(lines);
    const QString size = storageSize(static_cast<std::int64_t>(listing.bytes));
    m_sheet->setSentence(lines.isEmpty() ? qt::hostText("app_NOTHINGTHERE")
                                         : qt::hostText("app_FORGOOD", "size", size.toStdString()));
    m_sheet->setAction(lines.isEmpty() ? QString() : qt::hostText("app_DELETE"));
    if (lines.isEmpty()) {
        m_sheet->setCancel(qt::hostText("app_CLOSE"));
    }
    applyLook(*m_sheet, m_look);
    connect(&m_sheet->action(), &QAbstractButton::clicked, this, [this, listing] { runListed(listing); });
    m_sheet->open();
}

/// While it runs, the other button stops it at the next entry.
void StoragePane::runListed(const Listing& listing) {
    m_sheet->setAction({});
    m_sheet->setSentence(qt::hostText("app_DELETING"));
    m_sheet->setCancel(qt::hostText("app_STOP"));
    connect(m_sheet, &QDialog::rejected, this, [this] { m_work.stop(); });
    m_work.run(listing, [this](const Released& deleted) {
        m_hasResult = true;
        m_result->display(deletedText(deleted));
        if (m_sheet != nullptr) {
            m_sheet->disconnect(this);
            m_sheet->close();
        }
        follow(true);
        m_changed();
    });
}

void StoragePane::setLook(const Look& look) {
    m_look = look;
}

} // namespace vantor::hosts::app
