// SPDX-License-Identifier: MIT
#include "hosts/wall/Wall.hpp"

#include "hosts/qt/HostText.hpp"
#include "platform/core/WorkItem.hpp"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <utility>

namespace vantor::hosts::wall {

namespace {

constexpr std::chrono::seconds agesGrow{1};
constexpr int longestFilter = 200; // characters

} // namespace

std::chrono::nanoseconds Wall::steadyNow() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

Wall::Wall(platform::FleetSource& source, const std::string& name, Clock clock)
    : m_source(source),
      m_clock(std::move(clock)),
      m_head(QString::fromStdString(name)),
      m_view(m_table, m_clock) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (QWidget* const part : {static_cast<QWidget*>(&m_head), static_cast<QWidget*>(&m_view), &m_filterLine,
                                static_cast<QWidget*>(&m_foot)}) {
        column->addWidget(part);
    }
    auto* const line = new QHBoxLayout(&m_filterLine);
    line->addWidget(&m_filterName);
    line->addWidget(&m_filter);
    m_filterName.setText(qt::hostText("wall_FILTER"));
    m_filterName.setBuddy(&m_filter);
    m_filterLine.hide();
    m_filter.setMaxLength(longestFilter);
    m_filter.setAccessibleName(m_filterName.text());
    m_filter.installEventFilter(this);
    connect(&m_filter, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_table.filter(text.toStdString(), m_clock());
        m_view.refresh();
        tell();
    });
    m_view.setChangeHandler([this] { tell(); });
    // Answers come from threads on which no viewer is in place: here it is this one's that is told.
    m_source.setHandler(platform::WorkItem([this] { take(); }));
    m_time.setTimerType(Qt::CoarseTimer);
    m_time.setInterval(agesGrow);
    m_time.callOnTimeout(this, [this] { passTime(); });
    setFocusProxy(&m_view);
    take();
}

Wall::~Wall() {
    m_source.setHandler({});
    m_source.pause();
}

void Wall::setLook(const WallLook& look) {
    m_head.setLook(look);
    m_foot.setLook(look);
    m_view.setLook(look);
    QPalette palette = look.theme.palette();
    palette.setColor(QPalette::Window, look.theme.backdrop);
    palette.setColor(QPalette::WindowText, look.theme.secondaryText);
    setPalette(palette);
    m_filter.setFont(look.theme.font(TextSize::label));
    m_filterName.setFont(look.theme.font(TextSize::label));
    const int margin = look.pixels(Grid::margin);
    m_filterLine.layout()->setContentsMargins(margin, look.pixels(4), margin, look.pixels(6));
    tell();
}

void Wall::setSeen(bool isSeen) {
    if (isSeen == m_time.isActive()) {
        return;
    }
    if (isSeen) {
        m_source.start();
        m_time.start();
        take();
    } else {
        m_source.pause();
        m_time.stop();
    }
}

void Wall::groupBy(const std::string& label) {
    m_table.groupBy(label, m_clock());
    m_view.refresh();
}

int Wall::wholeHeight() const {
    return m_head.height() + m_view.wholeHeight() + m_foot.height();
}

void Wall::take() {
    m_table.take(m_source.snapshot(), m_clock());
    m_view.refresh();
    tell();
}

void Wall::passTime() {
    if (m_table.passTime(m_clock()) || m_view.tellsAges()) {
        m_view.refresh();
    }
    tell();
}

void Wall::tell() {
    m_head.tell(m_table, m_clock());
    m_foot.tell(m_table.order(), m_view.density());
}

void Wall::openFilter() {
    m_filterLine.show();
    m_filter.setFocus();
    m_filter.selectAll();
}

void Wall::closeFilter() {
    m_filter.clear();
    m_filterLine.hide();
    m_view.setFocus();
}

void Wall::keyPressEvent(QKeyEvent* event) {
    if (event->text() == QLatin1String("/")) {
        openFilter();
    } else if (event->key() == Qt::Key_Escape && !m_filterLine.isHidden()) {
        closeFilter();
    } else {
        event->ignore();
    }
}

/// From the line back to the machines that it leaves.
bool Wall::eventFilter(QObject* object, QEvent* event) {
    if (object == &m_filter && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape) {
            closeFilter();
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down) {
            m_view.setFocus();
            return true;
        }
    }
    return QWidget::eventFilter(object, event);
}

void arrange(Wall& wall, const std::string& sort, const std::string& groupBy) {
    if (const std::optional<fleet::FleetOrder> order = fleet::orderNamed(sort)) {
        wall.view().orderBy(*order);
    }
    wall.groupBy(groupBy);
}

} // namespace vantor::hosts::wall
