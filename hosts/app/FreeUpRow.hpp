// SPDX-License-Identifier: MIT
#pragma once

#include "actions/FreeUpMemory.hpp"
#include "hosts/app/ActionButton.hpp"
#include "hosts/app/Text.hpp"
#include "hosts/app/Worker.hpp"

#include <QWidget>
#include <atomic>
#include <functional>
#include <memory>

namespace vantor::hosts::app {

/// What freeing memory would give, and the button that does it: a look comes first and says how much at most,
/// or why nothing can be gained; afterwards it says what was measured.
class FreeUpRow final : public QWidget {
    Q_OBJECT

public:
    /// `changed` hears that memory was freed. `pace` is the actions' clock.
    FreeUpRow(std::function<void()> changed, Pace pace);
    ~FreeUpRow() override;

    /// Looks, unless that was done before.
    void lookOnce();
    /// A link wants memory freed, which is done once a minute at most.
    void runByLink();
    /// Ends the work at its next step.
    void stop();
    /// Whether it says what could be gained, and does nothing at the moment.
    [[nodiscard]] bool isSettled() const { return m_action != nullptr && !m_isBusy; }

    [[nodiscard]] const Text& sentence() const { return *m_sentence; }
    [[nodiscard]] ActionButton& button() { return *m_button; }

private:
    void run();
    void settle(const std::shared_ptr<const FreeUpMemory>& action, const std::string& sentence);
    void refuseLink(const QString& sentence);
    void setBusy(bool busy, const char* sentence);

    std::function<void()> m_changed;
    Pace m_pace;
    Text* m_sentence;
    ActionButton* m_button;
    Alive m_alive = std::make_shared<bool>(true);
    std::shared_ptr<std::atomic<bool>> m_stopped;
    std::shared_ptr<const FreeUpMemory> m_action;
    bool m_isBusy = false;
    bool m_isWanted = false; ///< by a link, as soon as the look is over
    QString m_refusal;       ///< of a link that came during a look
};

} // namespace vantor::hosts::app
