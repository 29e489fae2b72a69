// SPDX-License-Identifier: MIT
#include "hosts/widget/MachinePage.hpp"

#include "hosts/qt/HostText.hpp"
#include "platform/core/MakeForEver.hpp"
#include "platform/machine/Machine.hpp"

#include <QPainter>
#include <algorithm>
#include <memory>
#include <utility>

namespace vantor::hosts::widget {

using platform::NCWidgetDisplayMode;

namespace {

constexpr double backWidth = 112, backHeight = 32, edge = 16; // points

/// Never undone: workers may be sampling. The machines of a fleet are the same one in turn. The viewer is
/// the one that the program has put in place for all of its life.
void putInPlace(platform::Machine& machine) {
    if (platform::Current<platform::Machine>::get() != &machine) {
        platform::makeForEver<platform::Current<platform::Machine>>(machine);
    }
}

} // namespace

MachinePage::MachinePage(std::unique_ptr<common::RemoteNode> node, std::function<void()> back,
                         QWidget* parent)
    : QWidget(parent), m_node(std::move(node)), m_word(this), m_back(this) {
    m_back.setText(QStringLiteral("\u2039 ") + qt::hostText("wall_BACK"));
    m_back.setFlat(true);
    connect(&m_back, &QPushButton::clicked, this, std::move(back),
            Qt::QueuedConnection); // the page goes with it
    m_word.setAlignment(Qt::AlignCenter);
    m_word.setTextFormat(Qt::PlainText);
    m_word.setText(qt::hostText(m_node == nullptr ? "wall_GONE" : "wall_ASKING"));
    if (m_node != nullptr) {
        // It may tell so in the middle of a turn of the loop, which the widget is about to take over.
        m_node->setHandler([this] {
            if (m_host == nullptr) {
                QMetaObject::invokeMethod(
                    this, [this] { takeHost(); }, Qt::QueuedConnection);
            }
        });
        m_node->start();
        takeHost();
    }
}

MachinePage::~MachinePage() {
    if (m_host != nullptr) {
        m_host->setActive(false);
        m_host->setResizeHandler({});
    }
}

void MachinePage::takeHost() {
    if (m_host != nullptr) {
        return;
    }
    if (!m_node->isReady()) {
        m_word.setText(QString::fromStdString(m_node->heading()));
        return;
    }
    putInPlace(m_node->machine());
    m_host = std::make_unique<WidgetHost>();
    m_host->card().setParent(this);
    m_host->setResizeHandler([this](platform::CGSize size) {
        m_content = size;
        m_host->card().setContentSize(size);
        place();
    });
    m_host->card().setToggleHandler([this] {
        const bool isExpanded = m_host->mode() == NCWidgetDisplayMode::expanded;
        m_host->setMode(isExpanded ? NCWidgetDisplayMode::compact : NCWidgetDisplayMode::expanded, tallest());
    });
    m_host->follow(*m_node);
    setLook(m_look);
    m_host->setMode(NCWidgetDisplayMode::expanded, tallest());
    m_host->card().show();
    m_word.hide();
    place();
    setSeen(m_isSeen);
}

double MachinePage::tallest() const {
    return std::max(height() / m_look.theme.pointScale, 800.0);
}

void MachinePage::setLook(const wall::WallLook& look) {
    m_look = look;
    m_word.setFont(look.theme.font(wall::TextSize::body));
    m_back.setFont(look.theme.font(wall::TextSize::label));
    QPalette palette = look.theme.palette();
    palette.setColor(QPalette::Window, look.theme.backdrop);
    palette.setColor(QPalette::WindowText, look.theme.secondaryText);
    setPalette(palette);
    if (m_host != nullptr) {
        m_host->setTheme(look.theme);
    }
    place();
}

void MachinePage::setSeen(bool isSeen) {
    m_isSeen = isSeen;
    if (m_host == nullptr) {
        return;
    }
    if (isSeen && m_ready) {
        m_ready();
    }
    m_host->setActive(isSeen);
}

void MachinePage::place() {
    m_word.setGeometry(rect());
    const QSize back(m_look.pixels(backWidth), m_look.pixels(backHeight));
    const int inset = m_look.pixels(edge);
    m_back.setGeometry(isRightToLeft() ? width() - inset - back.width() : inset, inset, back.width(),
                       back.height());
    if (m_host != nullptr) {
        WidgetCard& card = m_host->card();
        card.move((width() - card.width()) / 2, std::max((height() - card.height()) / 2, 0));
    }
}

void MachinePage::resizeEvent(QResizeEvent* /*event*/) {
    place();
}

void MachinePage::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).fillRect(rect(), m_look.theme.backdrop);
}

} // namespace vantor::hosts::widget
