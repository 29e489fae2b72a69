// SPDX-License-Identifier: MIT
#include "hosts/widget/WallWindow.hpp"

#include "hosts/common/UserFile.hpp"
#include "hosts/qt/WindowSize.hpp"
#include "platform/posix/UserFolders.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <algorithm>
#include <chrono>
#include <string_view>
#include <utility>

namespace vantor::hosts::widget {

namespace {

constexpr QSize usualSize(1200, 760), leastSize(420, 240); // points
constexpr std::chrono::seconds untilKept{1}; // a session often ends without a word to its programs

/// Of this user's last wall, whichever it was: $XDG_STATE_HOME/vantor/wall-window.
std::string statePath() {
    return common::userFilePath(platform::posix::UserFolders::fromEnvironment().state, "vantor/wall-window");
}

std::optional<QSize> rememberedSize() {
    const std::string text = common::readUserFile(statePath());
    std::string_view left = text;
    return qt::takeSize(left);
}

} // namespace

WallWindow::WallWindow(const Options& options, common::FleetHost& fleet)
    : m_options(options),
      m_toolkitAppearance(qt::toolkitAppearance()),
      m_fleet(fleet),
      m_settings([this](const qt::DesktopWishes& wishes) { follow(wishes); }),
      m_wall(fleet.source(), fleet.name()),
      m_presence(*this, [this](bool) { seenChanged(); }),
      m_loop([](platform::Instant now) { platform::RunLoop::main().turn(now); },
             std::chrono::steady_clock::now) {
    setWindowTitle(QString::fromStdString(fleet.name()) + QStringLiteral(" \u2013 Vantor"));
    setWindowFlag(Qt::WindowStaysOnTopHint, options.onTop);
    m_wall.setParent(this);
    setFocusProxy(&m_wall);
    wall::arrange(m_wall, options.fleet.sort, options.fleet.groupBy);
    m_wall.view().setOpenHandler([this](const platform::FleetMachine& machine) { openMachine(machine); });
    follow(m_settings.wishes());
    const auto sized = [this](QSize points) {
        return QSize(m_look.pixels(points.width()), m_look.pixels(points.height()))
            .boundedTo(screen()->availableSize());
    };
    setMinimumSize(sized(leastSize));
    resize(rememberedSize().value_or(sized(usualSize)).boundedTo(screen()->availableSize()));
    m_keeping.setSingleShot(true);
    m_keeping.setInterval(untilKept);
    m_keeping.callOnTimeout(this, [this] { keep(); });
    for (const auto& keys : {QKeySequence(QKeySequence::Quit), QKeySequence(QKeySequence::Close)}) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, [this] { close(); });
    }
}

WallWindow::~WallWindow() {
    m_page.reset();
    m_loop.stop();
}

void WallWindow::start() {
    show();
    m_wall.view().setFocus();
}

void WallWindow::heed(const Options& asked) {
    if (asked.appearance) {
        m_options.appearance = asked.appearance;
        follow(m_settings.wishes());
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void WallWindow::follow(const qt::DesktopWishes& wishes) {
    const platform::Appearance appearance =
        fixedAppearance(m_options).value_or(wishes.appearance.value_or(m_toolkitAppearance));
    // Where the desktop's factor is in the size of its fonts already, it counts once.
    const double scale = std::max(qt::desktopTextScale(), wishes.textScale);
    m_look = wall::WallLook::of(appearance, scale, wishes.accent);
    QApplication::setPalette(m_look.theme.palette());
    m_wall.setLook(m_look);
    if (m_page != nullptr) {
        m_page->setLook(m_look);
    }
    m_presence.setScreenLocked(wishes.locked);
}

/// Whoever is shown is asked for, nobody else; the widget of an opened machine turns the loop itself.
void WallWindow::seenChanged() {
    const bool isSeen = m_presence.isSeen();
    const bool turnsItself = m_page != nullptr && m_page->host() != nullptr;
    if (!isSeen || turnsItself) {
        m_loop.stop();
    }
    m_wall.setSeen(isSeen && m_page == nullptr);
    if (m_page != nullptr) {
        m_page->setSeen(isSeen);
    }
    if (isSeen && !turnsItself) {
        m_loop.start();
    }
}

void WallWindow::openMachine(const platform::FleetMachine& machine) {
    if (m_page != nullptr) {
        return;
    }
    m_page = std::make_unique<MachinePage>(
        m_fleet.openMachine(machine), [this] { closeMachine(); }, this);
    m_page->setReadyHandler([this] { m_loop.stop(); });
    m_page->setLook(m_look);
    m_page->resize(size());
    m_wall.hide();
    m_page->show();
    m_page->setFocus();
    seenChanged();
}

void WallWindow::closeMachine() {
    if (m_page == nullptr) {
        return;
    }
    m_page.reset();
    m_wall.show();
    m_wall.view().setFocus();
    seenChanged();
}

void WallWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_wall.resize(size());
    if (m_page != nullptr) {
        m_page->resize(size());
    }
    m_keeping.start();
}

void WallWindow::closeEvent(QCloseEvent* event) {
    keep();
    event->accept();
}

/// A failure is of no consequence.
void WallWindow::keep() {
    if (isVisible() && m_options.fleet.demo == 0) {
        const bool isWhole = isMaximized() || isFullScreen();
        (void)common::writeUserFile(statePath(),
                                    qt::sizeText(isWhole ? normalGeometry().size() : size()) + '\n');
    }
}

/// A press or a key tells that nobody locked the screen, whatever a locker said.
bool WallWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) {
        m_settings.noteInput();
    }
    return QWidget::event(event);
}

void WallWindow::keyPressEvent(QKeyEvent* event) {
    m_settings.noteInput();
    if (event->key() == Qt::Key_Escape && m_page != nullptr) {
        // What is at work within the page may have sent it.
        QMetaObject::invokeMethod(
            this, [this] { closeMachine(); }, Qt::QueuedConnection);
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace vantor::hosts::widget
