// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"

#include <QColor>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <functional>
#include <optional>

class QDBusMessage;

namespace vantor::hosts::qt {

/// What the desktop wants of its programs, as far as it says so.
struct DesktopWishes {
    std::optional<platform::Appearance> appearance;
    QColor accent; ///< invalid: none of its own
    bool reducedMotion = false;
    bool locked = false; ///< the screen is
};

/// Listens to the desktop's settings portal and to the screen locker on the session bus. Without a bus or a
/// portal nothing is wished.
class DesktopSettings final : public QObject {
    Q_OBJECT

public:
    /// `changed` is called after each change; the first answer is waited for briefly, so that a dark desktop
    /// does not see a light window flash by.
    explicit DesktopSettings(std::function<void(const DesktopWishes&)> changed);

    [[nodiscard]] const DesktopWishes& wishes() const { return m_wishes; }

private:
    Q_SLOT void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);
    Q_SLOT void lockChanged(bool active);
    void readAll();
    void takeAll(const QDBusMessage& reply);
    void take(const QString& group, const QString& key, const QVariant& value);
    void listen();

    std::function<void(const DesktopWishes&)> m_changed;
    DesktopWishes m_wishes;
    QDBusConnection m_bus;
};

} // namespace vantor::hosts::qt
