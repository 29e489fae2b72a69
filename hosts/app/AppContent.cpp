// SPDX-License-Identifier: MIT
#include "hosts/app/AppContent.hpp"

#include "charts/ArcChartStyle.hpp"
#include "hosts/app/EndDialog.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/qt/RingAccessible.hpp"
#include "settings/ChartColor.hpp"

#include <QHBoxLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>

namespace vantor::hosts::app {

namespace {

constexpr std::chrono::seconds demoInterval{2};

/// In the demonstration each look at the clock is one interval later, so that its figures are the same on a
/// busy machine.
ProcessorPageSampler::Clock clockFor(bool demo) {
    if (!demo) {
        return std::chrono::steady_clock::now;
    }
    return [now = std::chrono::steady_clock::time_point()]() mutable { return now += demoInterval; };
}

/// An action's waits cost nothing in the demonstration.
Pace paceFor(bool demo) {
    if (!demo) {
        return {};
    }
    const auto now = std::make_shared<Pace::Moment>();
    return {[now] { return *now; }, [now](std::chrono::milliseconds time) { *now += time; }};
}

std::function<std::int64_t()> timeFor(bool demo) {
    constexpr std::int64_t demoTime = 1'700'000'000;
    return [demo] { return demo ? demoTime : static_cast<std::int64_t>(std::time(nullptr)); };
}

std::vector<qt::RingView*> ringsOf(QWidget& top) {
    std::vector<qt::RingView*> rings;
    for (Ring* const ring : top.findChildren<Ring*>()) {
        rings.push_back(&ring->view());
    }
    return rings;
}

} // namespace

AppContent::AppContent(bool demo)
    : m_demo(demo),
      m_sampler([this](const Sample& sample) { display(sample); }, clockFor(demo)),
      m_scroll(new QScrollArea),
      m_column(new QWidget) {
    for (std::size_t i = 0; i + 1 < pageCount; ++i) {
        m_models.at(i) = std::make_shared<ArcChartViewModel>(usableChartColor);
    }
    m_sidebar = new Sidebar(m_models, [this](PageKind page) { setPage(page); });
    m_memory = new MemoryPane(
        m_models[0], !demo, [this] { refresh(); }, paceFor(demo));
    m_storage = new StoragePane(
        m_models[1], [this] { refresh(); }, timeFor(demo));
    m_processor = new ProcessorPane(m_models[2], !demo);
    m_settings = new SettingsPane(m_models[0], [this] { refresh(); });
    m_panes = {m_memory, m_storage, m_processor, m_settings};
    auto* const column = new QVBoxLayout(m_column);
    column->setContentsMargins(0, Grid::margin, 0, Grid::margin);
    column->setSpacing(0);
    for (QWidget* const each : m_panes) {
        each->hide();
        column->addWidget(each);
    }
    column->addStretch();
    m_scroll->setWidget(m_column);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded); // on a screen of 640 pixels
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->viewport()->setAutoFillBackground(false);
    m_column->setAutoFillBackground(false);
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    line->addWidget(m_sidebar);
    line->addWidget(m_scroll, 1);
    for (UseList* const list : {&m_memory->list(), &m_processor->list()}) {
        list->tree().setAction(qt::hostText("app_END"), [this](const UseRow& row) { endApplication(row); });
    }
    m_memory->list().tree().setUnfoldHandler([this] { refresh(); }); // a share waits for its interval
    qt::installRingAccessibility();
    m_memory->head().ring().view().setAccessibleName(qt::hostText("home_USEDRAM"));
    m_storage->head().ring().view().setAccessibleName(qt::hostText("home_USEDSPACE"));
    m_processor->head().ring().view().setAccessibleName(qt::hostText("home_USEDCPU"));
    m_lengths.emplace(*this);
    for (const PageKind page : {PageKind::memory, PageKind::storage, PageKind::processor}) {
        auto rings = pane(page)->findChildren<Ring*>() << m_sidebar->entry(page).ring();
        if (page == PageKind::memory) { // the settings show the same one
            rings << m_settings->findChildren<Ring*>();
        }
        m_rings.at(static_cast<std::size_t>(page)).assign(rings.begin(), rings.end());
    }
    m_animator = std::make_unique<qt::RingAnimator>(ringsOf(*this));
    setPage(PageKind::memory);
}

AppContent::~AppContent() = default;

void AppContent::setPage(PageKind page) {
    m_sidebar->entry(page).setChecked(true);
    if (page == m_page && pane(page)->isVisibleTo(this)) {
        return;
    }
    m_page = page;
    m_isComplete = false;
    for (QWidget* const each : m_panes) {
        each->setVisible(each == pane(page));
    }
    m_scroll->verticalScrollBar()->setValue(0);
    followPage();
    if (m_pageChanged) {
        m_pageChanged(page);
    }
}

int AppContent::tallness() const {
    return m_column->layout()->totalHeightForWidth(m_column->width());
}

void AppContent::refresh() {
    const UseList* const list = m_page == PageKind::memory      ? &m_memory->list()
                                : m_page == PageKind::processor ? &m_processor->list()
                                                                : nullptr;
    m_sampler.take({m_page, list != nullptr ? list->tree().unfolded() : std::set<std::string>()});
}

void AppContent::pause() {
    m_sampler.forget();
}

/// What only the shown page does, and only while it can be seen.
void AppContent::followPage() {
    m_settings->follow(m_isSeen && m_page == PageKind::settings);
    m_storage->follow(m_isSeen && m_page == PageKind::storage);
    if (m_isSeen && m_page == PageKind::memory) {
        m_memory->freeUp().lookOnce();
    }
}

bool AppContent::isComplete() const {
    return m_isComplete && (m_page != PageKind::memory || m_memory->freeUp().isSettled()) &&
           (m_page != PageKind::storage || m_storage->isCounted());
}

void AppContent::freeMemoryByLink() {
    setPage(PageKind::memory);
    m_memory->freeUp().runByLink();
}

void AppContent::endApplication(const UseRow& row) {
    if (row.use) {
        (void)askToEnd(this, m_look, *row.use, [this] { refresh(); });
    }
}

void AppContent::setSeen(bool seen) {
    m_isSeen = seen;
    followPage();
}

void AppContent::showRing(PageKind page, const std::optional<double>& fraction) {
    const auto at = static_cast<std::size_t>(page);
    for (Ring* const ring : m_rings.at(at)) {
        ring->view().setHasFigure(fraction.has_value());
    }
    if (fraction) {
        m_models.at(at)->setProgress(*fraction);
    }
    m_sidebar->entry(page).setPercentage(fraction ? QString::fromStdString(percentText(*fraction))
                                                  : QStringLiteral("–"));
}

void AppContent::display(const Sample& sample) {
    showRing(PageKind::memory, sample.memory);
    showRing(PageKind::storage, sample.storage);
    showRing(PageKind::processor, sample.processor);
    if (sample.memoryPage) {
        m_memory->display(*sample.memoryPage, sample.unfolded);
    }
    m_processor->displayMinute(sample.minute);
    if (sample.processorPage) {
        m_processor->display(*sample.processorPage, sample.unfolded);
    }
    if (sample.processorStart) {
        m_processor->displayStart(*sample.processorStart, sample.minute);
    }
    const bool hasPage = m_page == PageKind::memory      ? sample.memoryPage.has_value()
                         : m_page == PageKind::processor ? sample.processorPage.has_value()
                                                         : true;
    m_isComplete = m_isComplete || hasPage;
    ++m_samples;
    fitRoom();
    m_animator->start();
}

void AppContent::setLook(const Look& look) {
    m_look = look;
    setFont(look.theme.font(TextSize::body));
    m_lengths->scale(look.theme);
    m_sidebar->setFixedWidth(std::max(look.pixels(Grid::sidebar), m_sidebar->layout()->sizeHint().width()));
    fitColumn();
    update();
}

/// The cards keep their width in the middle of a wide window.
void AppContent::fitColumn() {
    const int room = width() - m_sidebar->width();
    const int most = m_look.pixels(Grid::column + 2 * Grid::margin);
    const int side = std::max(m_look.pixels(Grid::margin), (room - most) / 2 + m_look.pixels(Grid::margin));
    const int margin = m_look.pixels(Grid::margin);
    m_column->layout()->setContentsMargins(side, margin, side, margin);
    fitRoom();
}

/// What is left below the cards is for the list.
void AppContent::fitRoom() {
    for (UseList* const list : {&m_memory->list(), &m_processor->list()}) {
        list->setRoom(height() - 2 * m_look.pixels(Grid::margin) - list->y());
    }
}

void AppContent::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fitColumn();
}

void AppContent::paintEvent(QPaintEvent* event) {
    QPainter(this).fillRect(event->rect(), m_look.theme.backdrop);
}

} // namespace vantor::hosts::app
