// SPDX-License-Identifier: MIT
#include "hosts/app/AppWindow.hpp"

#include "hosts/app/AppMemory.hpp"
#include "hosts/app/Snapshot.hpp"
#include "hosts/qt/HostText.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <chrono>

namespace vantor::hosts::app {

namespace {

constexpr std::chrono::seconds betweenSamples{2}, firstInterval{1}, untilKept{1};

} // namespace

AppWindow::AppWindow(const Options& options)
    : m_options(options),
      m_toolkitAppearance(qt::toolkitAppearance()),
      m_settings([this](const qt::DesktopWishes& wishes) { follow(wishes); }),
      m_content(options.demo),
      m_presence(*this, [this](bool seen) { seenChanged(seen); }),
      m_loop([this](platform::Instant now) { turn(now); }, std::chrono::steady_clock::now) {
    setWindowTitle(QStringLiteral("Vantor"));
    m_content.setParent(this);
    m_sampling.setTimerType(Qt::CoarseTimer);
    m_sampling.setInterval(betweenSamples);
    m_sampling.callOnTimeout(this, [this] {
        m_content.refresh();
        if (m_sampling.intervalAsDuration() != betweenSamples) {
            m_sampling.setInterval(betweenSamples);
        }
    });
    m_keeping.setSingleShot(true);
    m_keeping.setInterval(untilKept);
    m_keeping.callOnTimeout(this, [this] { keep(); });
    follow(m_settings.wishes());
    const std::optional<AppState> state = rememberedApp();
    m_content.setPage(options.page.value_or(state ? state->page : PageKind::memory));
    m_content.setPageHandler([this](PageKind) {
        if (m_loop.isRunning()) {
            startSampling();
        }
        m_keeping.start();
    });
    const Look& look = m_content.look();
    const QSize usual(look.pixels(usualWidth), look.pixels(usualHeight));
    setMinimumSize(QSize(look.pixels(720), look.pixels(400)).boundedTo(screen()->availableSize()));
    resize((state ? state->size : usual).boundedTo(screen()->availableSize()));
    addShortcuts();
}

AppWindow::~AppWindow() {
    m_loop.stop();
    platform::RunLoop::main().clear();
}

/// The pages by number, as in a browser, and what every window knows.
void AppWindow::addShortcuts() {
    for (int i = 0; i < static_cast<int>(pageCount); ++i) {
        auto* const shortcut = new QShortcut(QKeySequence(int(Qt::CTRL) | (int(Qt::Key_1) + i)), this);
        connect(shortcut, &QShortcut::activated, this,
                [this, i] { m_content.setPage(static_cast<PageKind>(i)); });
    }
    for (const auto& keys : {QKeySequence(QKeySequence::Quit), QKeySequence(QKeySequence::Close)}) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, [this] { close(); });
    }
    connect(new QShortcut(QKeySequence(QKeySequence::Refresh), this), &QShortcut::activated, this,
            [this] { m_content.refresh(); });
}

void AppWindow::follow(const qt::DesktopWishes& wishes) {
    const platform::Appearance appearance =
        m_options.appearance.value_or(wishes.appearance.value_or(m_toolkitAppearance));
    // Where the desktop's factor is in the size of its fonts already, it counts once.
    const double scale = std::max(qt::desktopTextScale(), wishes.textScale);
    const Look look = Look::of(appearance, scale, wishes.accent);
    QApplication::setPalette(look.theme.palette());
    applyLook(m_content, look);
    m_content.animator().setMotion(!wishes.reducedMotion);
    m_presence.setScreenLocked(wishes.locked);
}

/// Nothing is looked at for nobody.
void AppWindow::seenChanged(bool seen) {
    if (!seen) {
        m_sampling.stop();
        m_loop.stop();
        m_content.animator().settle();
        m_content.pause();
        m_content.setSeen(false);
        m_pauses.begin();
        return;
    }
    m_loop.start();
    m_content.setSeen(true);
    startSampling();
}

/// The processor page has rows when there is an interval, and nobody is to wait for a long one.
void AppWindow::startSampling() {
    m_content.refresh();
    m_sampling.start(m_content.page() == PageKind::processor ? firstInterval : betweenSamples);
}

void AppWindow::turn(platform::Instant now) {
    if (m_pauses.isOver(now)) {
        m_content.pause();
    }
    platform::RunLoop::main().turn(now);
}

void AppWindow::heed(const Options& asked) {
    if (asked.page) {
        m_content.setPage(*asked.page);
    }
    comeForward();
    if (asked.cleansRam) {
        m_content.freeMemoryByLink();
    }
}

void AppWindow::comeForward() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void AppWindow::keep() {
    if (isVisible() && !m_options.demo) {
        const bool isWhole = isMaximized() || isFullScreen();
        rememberApp({isWhole ? normalGeometry().size() : size(), m_content.page()});
    }
}

void AppWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_content.resize(size());
    m_keeping.start();
}

void AppWindow::closeEvent(QCloseEvent* event) {
    keep();
    event->accept();
}

/// A press or a key tells that nobody locked the screen, whatever a locker said.
bool AppWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) {
        m_settings.noteInput();
    }
    return QWidget::event(event);
}

void AppWindow::keyPressEvent(QKeyEvent* event) {
    m_settings.noteInput();
    QWidget::keyPressEvent(event);
}

} // namespace vantor::hosts::app
