// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>

namespace vantor::hosts::qt {

/// A notice that the desktop shows (org.freedesktop.Notifications, Desktop Notifications 1.2), with one
/// button. Nothing waits for the server. Main thread.
class Notice final : public QObject {
    Q_OBJECT

public:
    /// What is called when the notice or its button is pressed, and when no server took it.
    Notice(const QDBusConnection& bus, std::function<void()> pressed, std::function<void()> refused);

    /// Replaces the one before. `action` is the button's text.
    void show(const QString& text, const QString& action);

private:
    Q_SLOT void heed(uint id, const QString& action);

    QDBusConnection m_bus;
    std::function<void()> m_pressed;
    std::function<void()> m_refused;
    uint m_id = 0; ///< the server's; 0: none was shown
};

} // namespace vantor::hosts::qt
