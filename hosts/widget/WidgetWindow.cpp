// SPDX-License-Identifier: MIT
#include "hosts/widget/WidgetWindow.hpp"

#include "controller/ReportInterface.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/qt/LinkOpener.hpp"
#include "hosts/widget/WindowMemory.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

namespace vantor::hosts::widget {

using platform::NCWidgetDisplayMode;
using platform::RunLoop;

namespace {

constexpr double compactHeight = 110;  // points
constexpr double backdropMargin = 12;  // points around the card in a framed window
constexpr double usualFontSize = 14.7; // pixels: eleven points at 96 dots an inch, what desktops come with
constexpr double greatestTextScale = 3;

/// Larger text grows the whole card.
double textScale() {
    const double size = QFontInfo(QApplication::font()).pixelSize();
    return std::clamp(size / usualFontSize, 1.0, greatestTextScale);
}

bool isWayland() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

/// What the toolkit's theme looks like, for desktops that do not say.
platform::Appearance themeAppearance() {
    const bool dark = QApplication::palette().color(QPalette::Window).lightness() < 128;
    return dark ? platform::Appearance::dark : platform::Appearance::light;
}

} // namespace

WidgetWindow::WidgetWindow(const Options& options)
    : m_options(options),
      m_themeAppearance(themeAppearance()),
      m_settings([this](const qt::DesktopWishes& wishes) { follow(wishes); }),
      m_context(std::make_shared<DesktopContext>(
          [this](const platform::NSURL& url, std::function<void(bool)> finished) {
              open(url, std::move(finished));
          })),
      m_controller(ReportInterface::instantiate()),
      m_loop([this] { turned(); }, [this] { resume(); }),
      m_presence(*this, [this](bool) { seenChanged(); }) {
    m_controller->setExtensionContext(m_context);
    m_controller->view();
    m_card = std::make_unique<ReportCard>(m_controller, this);
    setUpWindow();
    m_card->setToggleHandler([this] { toggleMode(); });
    m_controller->setPreferredContentSizeHandler([this](platform::CGSize) { fit(); });
    m_context->setModeHandler([this] { setMode(m_mode); });
    follow(m_settings.wishes());
    restore();
    setUpTray();
}

WidgetWindow::~WidgetWindow() {
    remember();
    m_loop.stop();
    m_controller->setPreferredContentSizeHandler({});
    m_context->setModeHandler({});
    RunLoop::main().clear();
}

void WidgetWindow::setUpWindow() {
    setWindowTitle(QStringLiteral("Vantor"));
    const bool frameless = m_options.frameless || m_options.onDesktop || isWayland(); // see docs/decisions.md
    setWindowFlag(Qt::FramelessWindowHint, frameless);
    setWindowFlag(Qt::WindowStaysOnTopHint, m_options.onTop);
    setWindowFlag(Qt::WindowStaysOnBottomHint, m_options.onDesktop);
    setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    setAttribute(Qt::WA_TranslucentBackground, frameless);
    m_margin = frameless ? 0 : 1;
}

/// As it was left; a position only where that is still on a screen.
void WidgetWindow::restore() {
    const WindowState state = rememberedWindow().value_or(WindowState{});
    setMode(m_options.expanded.value_or(state.expanded) ? NCWidgetDisplayMode::expanded
                                                        : NCWidgetDisplayMode::compact);
    if (state.position && QGuiApplication::screenAt(*state.position) != nullptr) {
        move(*state.position);
        keepOnScreen();
    }
}

/// A card that has grown, by its mode or by larger text, moves back onto the screen it is on.
void WidgetWindow::keepOnScreen() {
    const QScreen* on = QGuiApplication::screenAt(pos());
    if (on == nullptr || isWayland()) {
        return;
    }
    const QRect room = on->availableGeometry();
    const QSize size = frameGeometry().size();
    const QPoint inside(std::max(room.left(), std::min(x(), room.right() + 1 - size.width())),
                        std::max(room.top(), std::min(y(), room.bottom() + 1 - size.height())));
    if (inside != pos()) {
        move(inside);
    }
}

void WidgetWindow::remember() const {
    if (!m_started) {
        return;
    }
    WindowState state;
    state.expanded = m_mode == NCWidgetDisplayMode::expanded;
    if (!isWayland()) { // there a client is not told where it is
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
    const platform::Appearance wished = wishes.appearance.value_or(m_themeAppearance);
    const platform::Appearance appearance =
        m_options.appearance == AppearanceChoice::light  ? platform::Appearance::light
        : m_options.appearance == AppearanceChoice::dark ? platform::Appearance::dark
                                                         : wished;
    setTheme(appearance, wishes.accent);
    m_card->animator().setMotion(!wishes.reducedMotion);
    m_presence.setScreenLocked(wishes.locked);
    seenChanged();
}

void WidgetWindow::setTheme(platform::Appearance appearance, const QColor& accent) {
    m_card->setTheme(qt::Theme::of(appearance, textScale(), accent));
    const qt::Theme& theme = m_card->theme();
    QPalette palette;
    palette.setColor(QPalette::Window, theme.card);
    palette.setColor(QPalette::WindowText, theme.text);
    palette.setColor(QPalette::Base, theme.card);
    palette.setColor(QPalette::Text, theme.text);
    palette.setColor(QPalette::Button, theme.fill);
    palette.setColor(QPalette::ButtonText, theme.text);
    palette.setColor(QPalette::ToolTipBase, theme.card);
    palette.setColor(QPalette::ToolTipText, theme.text);
    palette.setColor(QPalette::Highlight, theme.accent);
    QApplication::setPalette(palette);
    fit();
    update();
}

void WidgetWindow::setMode(NCWidgetDisplayMode mode) {
    const bool offered = m_context->widgetLargestAvailableDisplayMode() == NCWidgetDisplayMode::expanded;
    m_mode = offered ? mode : NCWidgetDisplayMode::compact;
    m_card->setCanExpand(offered);
    const double width = m_card->neededWidth();
    const bool expanded = m_mode == NCWidgetDisplayMode::expanded;
    m_card->setExpanded(expanded);
    const double tallest = screen()->availableGeometry().height() / m_card->theme().pointScale;
    m_controller->widgetActiveDisplayModeDidChange(m_mode, {width, expanded ? tallest : compactHeight});
    fit();
}

void WidgetWindow::toggleMode() {
    setMode(m_mode == NCWidgetDisplayMode::expanded ? NCWidgetDisplayMode::compact
                                                    : NCWidgetDisplayMode::expanded);
    keepOnScreen();
}

void WidgetWindow::fit() {
    const platform::CGSize size = m_controller->preferredContentSize();
    if (size.height <= 0) {
        return; // before the first mode
    }
    m_card->setContentSize(size);
    const int margin = m_margin == 0 ? 0 : m_card->theme().pixels(backdropMargin);
    m_card->move(margin, margin);
    setFixedSize(m_card->width() + 2 * margin, m_card->height() + 2 * margin);
}

/// The loop turns for whoever can see the figures: the window, or a ring in the tray.
void WidgetWindow::seenChanged() {
    const bool active = m_presence.isSeen() || (m_tray && !m_settings.wishes().locked);
    if (!m_presence.isSeen()) {
        m_card->animator().settle();
    }
    if (std::exchange(m_active, active) == active) {
        return;
    }
    if (!active) {
        m_loop.stop();
        return;
    }
    if (std::exchange(m_started, true)) {
        resume();
    }
    m_controller->widgetPerformUpdateWithCompletionHandler([](platform::NCUpdateResult) {});
    m_loop.start();
}

/// After a pause: the last picture stands until fresh figures come; no timer fires at once and no rate covers
/// the pause.
void WidgetWindow::resume() {
    RunLoop::main().restartTimers(std::chrono::steady_clock::now());
    m_controller->resumeNETWORKStatus();
    m_controller->makeReports();
}

void WidgetWindow::turned() {
    m_card->flush();
    m_card->showFailures(hosts::common::currentFailures());
    if (m_tray) {
        m_tray->update(m_card->theme());
    }
}

void WidgetWindow::open(const platform::NSURL& url, std::function<void(bool)> finished) {
    qt::openLink(*this, url,
                 [this, link = url.absoluteString(), finished = std::move(finished)](bool opened) {
                     if (!opened) {
                         m_card->showMessage(qt::hostText("host_NOHANDLER", "link", link));
                     }
                     if (finished) {
                         finished(opened);
                     }
                 });
}

void WidgetWindow::paintEvent(QPaintEvent* event) {
    if (m_margin != 0) {
        QPainter(this).fillRect(event->rect(), m_card->theme().backdrop);
    }
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
        m_card->actionButtons().front()->click();
    } else if (event->matches(QKeySequence::Quit) || event->matches(QKeySequence::Close)) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace vantor::hosts::widget
