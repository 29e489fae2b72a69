// SPDX-License-Identifier: MIT
#include "hosts/widget/WidgetWindow.hpp"

#include "hosts/qt/WindowPlace.hpp"
#include "hosts/widget/WindowMemory.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

namespace vantor::hosts::widget {

using platform::NCWidgetDisplayMode;

namespace {

constexpr int backdropMargin = 12; // points around the card in a framed window

} // namespace

WidgetWindow::WidgetWindow(const Options& options)
    : m_options(options),
      m_toolkitAppearance(qt::toolkitAppearance()),
      m_settings([this](const qt::DesktopWishes& wishes) { follow(wishes); }),
      m_menu(m_host.card(), *this, !qt::isWayland() && !options.onDesktop),
      m_presence(*this, [this](bool) { seenChanged(); }) {
    setUpFrame();
    m_host.card().setParent(this);
    m_host.card().setToggleHandler([this] { toggleMode(); });
    m_host.setResizeHandler([this] { fit(); });
    follow(m_settings.wishes());
    restore();
    setUpTray();
}

WidgetWindow::~WidgetWindow() {
    remember();
    m_host.setActive(false);
    m_host.setResizeHandler({});
}

void WidgetWindow::setUpFrame() {
    setWindowTitle(QStringLiteral("Vantor"));
    const bool frameless =
        m_options.frameless || m_options.onDesktop || qt::isWayland(); // see docs/decisions.md
    setWindowFlag(Qt::FramelessWindowHint, frameless);
    setWindowFlag(Qt::WindowStaysOnTopHint, m_options.onTop);
    setWindowFlag(Qt::WindowStaysOnBottomHint, m_options.onDesktop);
    setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    setAttribute(Qt::WA_TranslucentBackground, frameless);
    m_margin = frameless ? 0 : backdropMargin;
}

void WidgetWindow::setUpTray() {
    if (!m_options.tray || !QSystemTrayIcon::isSystemTrayAvailable()) {
        return;
    }
    QApplication::setQuitOnLastWindowClosed(false); // the ring in the tray stays
    m_tray = std::make_unique<TrayRing>(card().rings(), m_menu, [this] {
        if (isVisible() && !isMinimized()) {
            hide();
        } else {
            comeForward();
        }
    });
    m_tray->update(card().theme());
    m_host.setTurnHandler([this] { m_tray->update(card().theme()); });
}

/// As it was left.
void WidgetWindow::restore() {
    const WindowState state = rememberedWindow().value_or(WindowState{});
    setMode(m_options.expanded.value_or(state.expanded) ? NCWidgetDisplayMode::expanded
                                                        : NCWidgetDisplayMode::compact);
    if (state.position) {
        qt::moveBackTo(*this, *state.position);
    }
}

void WidgetWindow::remember() const {
    if (!m_wasSeen) {
        return;
    }
    WindowState state;
    state.expanded = m_host.mode() == NCWidgetDisplayMode::expanded;
    if (!qt::isWayland()) { // there a client is not told where it is
        state.position = pos();
    }
    if (rememberedWindow() != state) {
        rememberWindow(state);
    }
}

void WidgetWindow::comeForward() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void WidgetWindow::follow(const qt::DesktopWishes& wishes) {
    const platform::Appearance appearance =
        m_options.appearance == AppearanceChoice::light  ? platform::Appearance::light
        : m_options.appearance == AppearanceChoice::dark ? platform::Appearance::dark
                                                         : wishes.appearance.value_or(m_toolkitAppearance);
    m_host.setTheme(qt::Theme::of(appearance, qt::desktopTextScale(), wishes.accent));
    QApplication::setPalette(card().theme().palette());
    update();
    card().animator().setMotion(!wishes.reducedMotion);
    m_presence.setScreenLocked(wishes.locked);
    seenChanged();
}

void WidgetWindow::setMode(NCWidgetDisplayMode mode) {
    m_host.setMode(mode, screen()->availableGeometry().height() / card().theme().pointScale);
}

void WidgetWindow::toggleMode() {
    setMode(m_host.mode() == NCWidgetDisplayMode::expanded ? NCWidgetDisplayMode::compact
                                                           : NCWidgetDisplayMode::expanded);
    qt::keepOnScreen(*this);
}

void WidgetWindow::fit() {
    const int margin = card().theme().pixels(m_margin);
    card().move(margin, margin);
    setFixedSize(card().width() + 2 * margin, card().height() + 2 * margin);
}

/// The widget runs for whoever can see the figures: in the window, or as a ring in the tray.
void WidgetWindow::seenChanged() {
    if (!m_presence.isSeen()) {
        card().animator().settle();
    }
    m_wasSeen = m_wasSeen || m_presence.isSeen();
    m_host.setActive(m_presence.isSeen() || (m_tray && !m_settings.wishes().locked));
}

void WidgetWindow::paintEvent(QPaintEvent* event) {
    if (m_margin != 0) {
        QPainter(this).fillRect(event->rect(), card().theme().backdrop);
    }
}

void WidgetWindow::contextMenuEvent(QContextMenuEvent* event) {
    m_menu.popup(event->globalPos());
}

/// With a ring in the tray the window only steps back.
void WidgetWindow::closeEvent(QCloseEvent* event) {
    if (m_tray) {
        event->ignore();
        hide();
    } else {
        QWidget::closeEvent(event);
    }
}

void WidgetWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && windowFlags().testFlag(Qt::FramelessWindowHint)) {
        windowHandle()->startSystemMove();
    }
}

void WidgetWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Refresh)) {
        card().actionButtons().front()->click();
    } else if (event->matches(QKeySequence::Quit) || event->matches(QKeySequence::Close)) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace vantor::hosts::widget
