// SPDX-License-Identifier: MIT
#include "hosts/widget/WidgetWindow.hpp"

#include "hosts/qt/HostText.hpp"
#include "hosts/qt/WindowPlace.hpp"
#include "hosts/qt/X11Desktop.hpp"
#include "hosts/widget/Autostart.hpp"
#include "platform/core/PrintableText.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <chrono>
#include <utility>

namespace vantor::hosts::widget {

using platform::NCWidgetDisplayMode;

namespace {

constexpr std::chrono::milliseconds frameSettles{300}; // until the window manager has told how large it is
constexpr std::chrono::seconds trayPatience{30};       // of a window that was to start hidden

/// What was asked for, on top of what is remembered.
Options withRemembered(Options options, const WindowState& state) {
    const bool hasLevel = options.onTop || options.onDesktop;
    options.onTop = hasLevel ? options.onTop : state.onTop;
    options.onDesktop = hasLevel ? options.onDesktop : state.onDesktop;
    options.tray = options.tray || state.tray;
    options.expanded = options.expanded.value_or(state.expanded);
    return options;
}

} // namespace

WidgetWindow::WidgetWindow(const Options& options, WidgetHost::Programs programs)
    : m_given(options),
      m_options(withRemembered(options, m_keeper.state())),
      m_toolkitAppearance(qt::toolkitAppearance()),
      m_settings([this](const qt::DesktopWishes& wishes) { follow(wishes); }),
      m_host(std::move(programs)),
      m_menu(m_host.card(), *this, toggles()),
      m_presence(*this, [this](bool) { seenChanged(); }) {
    setUpFrame();
    m_host.card().setParent(this);
    m_host.card().setToggleHandler([this] { toggleMode(); });
    setUpGlide();
    m_host.setResizeHandler([this](platform::CGSize size) {
        m_content = size;
        if (!m_isChangingMode) {
            fit();
        }
    });
    m_host.setMessageHandler([this] {
        if (!isVisible()) {
            comeForward();
        }
    });
    follow(m_settings.wishes());
    setMode(*m_options.expanded ? NCWidgetDisplayMode::expanded : NCWidgetDisplayMode::compact);
    m_position = m_keeper.state().position;
    if (m_position) {
        qt::moveBackTo(*this, *m_position);
    }
    if (m_options.tray) {
        setTray(true);
    }
    if (m_options.warnMemory && !m_options.demo) {
        m_memoryWarning = std::make_unique<MemoryWarning>([this] { warnOfMemory(); });
    }
}

WidgetWindow::~WidgetWindow() {
    m_host.setActive(false);
    m_host.setResizeHandler({});
    m_host.setTurnHandler({});
}

std::vector<WidgetMenu::Toggle> WidgetWindow::toggles() {
    const auto autostart = [this](bool on) {
        if (const std::optional<std::string> problem = setAutostart(on, m_given)) {
            card().showMessage(QString::fromStdString(platform::printableText(*problem)));
        }
    };
    const auto hasLevels = [this] { return !qt::isWayland() || m_isOnLayer; };
    return {{"host_ALWAYSONTOP", [this] { return m_options.onTop; }, [this](bool on) { setLevel(on, false); },
             hasLevels},
            {"host_ONDESKTOP", [this] { return m_options.onDesktop; },
             [this](bool on) { setLevel(false, on); }, hasLevels},
            {"host_TRAYRING", [this] { return m_options.tray; },
             [this](bool on) {
                 const Options before = m_given;
                 m_given.tray = on;
                 followInAutostart(before, m_given);
                 // Its menu may be the one that this comes from.
                 QMetaObject::invokeMethod(
                     this, [this, on] { setTray(on); }, Qt::QueuedConnection);
             }},
            {"host_AUTOSTART", isAutostarted, autostart}};
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
}

/// A window that gains or loses its frame is made anew: what it is drawn on differs.
void WidgetWindow::setLevel(bool onTop, bool onDesktop) {
    const Options before = m_given;
    m_options.onTop = m_given.onTop = onTop;
    m_options.onDesktop = m_given.onDesktop = onDesktop;
    followInAutostart(before, m_given);
    const bool wasVisible = isVisible();
    const QPoint place = pos();
    hide();
    destroy();
    setUpFrame();
    fit();
    if (!qt::isWayland()) {
        move(place);
    }
    if (wasVisible) {
        show();
    }
    keep();
}

void WidgetWindow::setTray(bool wanted) {
    m_options.tray = wanted;
    if (wanted && !m_trayWatch) {
        m_trayWatch = std::make_unique<qt::TrayWatch>([this] { showTrayRing(); });
    } else if (!wanted) {
        m_trayWatch.reset();
        m_host.setTurnHandler({});
        m_tray.reset();
        m_menu.offerShowing(false);
        QApplication::setQuitOnLastWindowClosed(true);
        comeForward();
    }
    keep();
}

void WidgetWindow::showTrayRing() {
    QApplication::setQuitOnLastWindowClosed(false);       // the ring in the tray stays
    m_menu.offerShowing(true, [this] { toggleShown(); }); // first: the panel takes the menu as it is then
    m_tray = std::make_unique<TrayRing>(card().rings(), m_menu, [this] { toggleShown(); });
    const auto draw = [this] { m_tray->update(card().theme(), card().failures()); };
    draw();
    m_host.setTurnHandler(draw);
    seenChanged();
}

/// By the desktop, where a press leads to the page. Where nobody shows notices, in the tray if there is one,
/// else on the card, beside the button that leads there.
void WidgetWindow::warnOfMemory() {
    const auto openPage = [this] { card().openMemoryPage(); };
    m_notice = std::make_unique<qt::Notice>(QDBusConnection::sessionBus(), openPage, [this, openPage] {
        const QString text = qt::hostText("host_MEMORYSHORT");
        if (m_tray) {
            m_tray->tell(text, openPage);
        } else {
            card().showMessage(text);
        }
    });
    m_notice->show(qt::hostText("host_MEMORYSHORT"), qt::hostText("host_SHOWRAM"));
}

void WidgetWindow::toggleShown() {
    if (isVisible() && !isMinimized()) {
        hide();
    } else {
        comeForward();
    }
}

void WidgetWindow::start() {
    if (!m_options.hidden) {
        show();
        return;
    }
    (void)card().grab(QRect(0, 0, 1, 1)); // lays the rings out, which the one in the tray is drawn after
    // Nobody could get at a window that waits for a tray that never comes.
    QTimer::singleShot(trayPatience, this, [this] {
        if (!m_tray) {
            show();
        }
    });
}

void WidgetWindow::heed(const Options& asked) {
    if (asked.appearance) {
        m_options.appearance = asked.appearance;
        follow(m_settings.wishes());
    }
    if (asked.frameless != m_options.frameless && asked.frameless) {
        m_options.frameless = true;
        setLevel(m_options.onTop, m_options.onDesktop);
    }
    if (asked.onTop != m_options.onTop || asked.onDesktop != m_options.onDesktop) {
        if (asked.onTop || asked.onDesktop) {
            setLevel(asked.onTop, asked.onDesktop);
        }
    }
    if (asked.expanded) {
        if (*asked.expanded != (m_host.mode() == NCWidgetDisplayMode::expanded)) {
            toggleMode();
        }
    }
    if (asked.tray) {
        setTray(true);
    }
    if (asked.hidden && m_tray) {
        hide();
    } else {
        comeForward();
    }
}

/// Writes down what a later start takes up again.
void WidgetWindow::keep() {
    if (m_wasSeen) {
        m_keeper.keep({m_position, m_host.mode() == NCWidgetDisplayMode::expanded, m_options.onTop,
                       m_options.onDesktop, m_options.tray});
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
        fixedAppearance(m_options).value_or(wishes.appearance.value_or(m_toolkitAppearance));
    // Where the desktop's factor is in the size of its fonts already, it counts once.
    const double scale = std::max(qt::desktopTextScale(), wishes.textScale);
    m_host.setTheme(qt::Theme::of(appearance, scale, wishes.accent));
    QApplication::setPalette(card().theme().palette());
    m_menu.setTheme(card().theme());
    update();
    card().animator().setMotion(!wishes.reducedMotion);
    m_presence.setScreenLocked(wishes.locked);
    seenChanged();
}

/// The widget runs for whoever can see the figures: in the window, or as a ring in the tray.
void WidgetWindow::seenChanged() {
    if (!m_presence.isSeen()) {
        card().animator().settle();
        settle();
    } else if (!std::exchange(m_wasSeen, true)) {
        QTimer::singleShot(frameSettles, this, [this] { qt::keepOnScreen(*this); });
        keep();
    }
    m_host.setActive(m_presence.isSeen() || (m_tray && !m_settings.wishes().locked));
}

} // namespace vantor::hosts::widget
