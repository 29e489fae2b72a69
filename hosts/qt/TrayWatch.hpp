// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

namespace vantor::hosts::qt {

/// Waits for a tray: a panel may come later than the programs that are started with it. The toolkit asks once
/// and keeps the answer for ever, so nothing of its tray may be touched before this has found one.
class TrayWatch final : public QObject {
public:
    /// `found` is called once, in the event loop, soon where there is a tray already.
    explicit TrayWatch(std::function<void()> found);

private:
    void askForHost();
    void find();
    void lookLater();

    std::function<void()> m_found;
    QTimer m_again;
};

} // namespace vantor::hosts::qt
