// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"

#include <QColor>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>
#include <functional>
#include <optional>

class QDBusMessage;

namespace vantor::hosts::qt {

/// What the desktop wants of its programs, as far as it says so.
struct DesktopWishes {
    std::optional<platform::Appearance> appearance;
    QColor accent; ///< invalid where the desktop names none
    bool reducedMotion = false;
    bool locked = false;  ///< whether the screen is locked
    double textScale = 1; ///< how much larger than usual texts are to be, where the desktop names a factor
};

/// Listens to the desktop's settings portal and to the screen locker on the session bus. Without a bus or a
/// portal there are no wishes.
class DesktopSettings final : public QObject {
    Q_OBJECT

public:
    /// `changed` is called after each change. The constructor waits briefly for the first answer, so that no
    /// light window flashes up on a dark desktop.
    explicit DesktopSettings(std::function<void(const DesktopWishes&)> changed,
                             QDBusConnection bus = sessionBus());

    /// The user's bus where it is there, else a connection to nothing: asking the library for a bus that is
    /// not there would start one.
    [[nodiscard]] static QDBusConnection sessionBus();

    [[nodiscard]] const DesktopWishes& wishes() const { return m_wishes; }
    /// Somebody presses and types in a window: whatever a locker said, the screen is not locked any more.
    void noteInput() { setLocked(false); }

private:
    Q_SLOT void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);
    Q_SLOT void lockChanged(bool active, const QDBusMessage& message);
    void askForLocker(const QString& name);
    void setLocked(bool locked);
    void readAll();
    void takeAll(const QDBusMessage& reply);
    void take(const QString& group, const QString& key, const QVariant& value);
    void listen();

    std::function<void(const DesktopWishes&)> m_changed;
    DesktopWishes m_wishes;
    QDBusConnection m_bus;
    QDBusServiceWatcher m_locker; ///< the one that locked the screen
};

} // namespace vantor::hosts::qt
