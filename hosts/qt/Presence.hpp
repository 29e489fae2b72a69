// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>

namespace vantor::hosts::qt {

/// Whether a window can be seen, as far as the window system says: not hidden, minimised or unexposed (on
/// another workspace, where that is told), nor behind a locked screen.
class Presence final : public QObject {
public:
    /// `changed` hears the new state, once per change.
    Presence(QWidget& window, std::function<void(bool seen)> changed);

    void setScreenLocked(bool locked);
    [[nodiscard]] bool isSeen() const { return m_seen; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void update();

    QWidget& m_window;
    std::function<void(bool)> m_changed;
    bool m_locked = false;
    bool m_seen = false;
};

} // namespace vantor::hosts::qt
