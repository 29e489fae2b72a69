// SPDX-License-Identifier: MIT
#include "hosts/app/FreeUpRow.hpp"

#include "actions/ActionWords.hpp"
#include "hosts/common/FreeUpByLink.hpp"
#include "hosts/qt/HostText.hpp"
#include "platform/core/PrintableText.hpp"

#include <QHBoxLayout>
#include <utility>

namespace vantor::hosts::app {

namespace {

/// What a look or a run came to.
struct Outcome {
    std::shared_ptr<const FreeUpMemory> action;
    std::string sentence;
};

Outcome lookAgain(const std::shared_ptr<std::atomic<bool>>& stopped, const Pace& pace) {
    auto action = std::make_shared<const FreeUpMemory>([stopped] { return !*stopped; }, pace);
    std::string offer = freeUpOffer(*action);
    return {std::move(action), std::move(offer)};
}

} // namespace

FreeUpRow::FreeUpRow(std::function<void()> changed, Pace pace)
    : m_changed(std::move(changed)),
      m_pace(std::move(pace)),
      m_sentence((new Text(TextSize::label, Ink::secondary))->wrapped()),
      m_button(new ActionButton(ButtonSize::large)),
      m_stopped(std::make_shared<std::atomic<bool>>(false)) {
    m_button->setText(qt::hostText("host_CLEANRAM"));
    m_button->setEnabled(false);
    connect(m_button, &QAbstractButton::clicked, this, [this] { m_isBusy ? stop() : run(); });
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Grid::gap);
    line->addWidget(m_sentence, 1);
    line->addWidget(m_button);
}

FreeUpRow::~FreeUpRow() {
    *m_stopped = true;
}

void FreeUpRow::stop() {
    m_isWanted = false;
    *m_stopped = true;
}

void FreeUpRow::setBusy(bool busy, const char* sentence) {
    m_isBusy = busy;
    m_stopped = std::make_shared<std::atomic<bool>>(false);
    m_button->setText(qt::hostText(busy ? "app_STOP" : "host_CLEANRAM"));
    m_button->setEnabled(true);
    m_sentence->display(qt::hostText(sentence));
}

void FreeUpRow::settle(const std::shared_ptr<const FreeUpMemory>& action, const std::string& sentence) {
    m_isBusy = false;
    m_action = action;
    m_button->setText(qt::hostText("host_CLEANRAM"));
    m_button->setEnabled(action->refusal() == FreeUpRefusal::none);
    const QString refusal = std::exchange(m_refusal, QString());
    m_sentence->display(refusal.isEmpty() ? QString::fromStdString(sentence) : refusal);
}

void FreeUpRow::lookOnce() {
    if (m_isBusy || m_action != nullptr) {
        return;
    }
    setBusy(true, "app_LOOKING");
    onWorker(
        m_alive, [stopped = m_stopped, pace = m_pace] { return lookAgain(stopped, pace); },
        [this](const Outcome& outcome) {
            settle(outcome.action, outcome.sentence);
            if (m_isWanted) {
                run();
            }
        });
}

/// Looks afresh, since who is idle may have changed, and does what that finds.
void FreeUpRow::run() {
    m_isWanted = false;
    setBusy(true, "app_FREEING");
    onWorker(
        m_alive,
        [stopped = m_stopped, pace = m_pace] {
            Outcome outcome = lookAgain(stopped, pace);
            if (outcome.action->refusal() == FreeUpRefusal::none) {
                outcome.sentence = freeUpResult(outcome.action->run([stopped] { return !*stopped; }));
            }
            return outcome;
        },
        [this](const Outcome& outcome) {
            settle(outcome.action, outcome.sentence);
            m_isWanted = false; // it was done
            m_changed();
        });
}

void FreeUpRow::runByLink() {
    using Answer = common::LinkLeave::Answer;
    onWorker(
        m_alive, [] { return common::mayFreeUpByLink(); },
        [this](const common::LinkLeave& leave) {
            if (leave.answer == Answer::tooSoon) {
                refuseLink(qt::hostText("app_LINKAGAIN"));
            } else if (leave.answer == Answer::notKept) {
                refuseLink(
                    qt::hostText("app_LINKNOTKEPT", "reason", platform::printableText(leave.problem, 4096)));
            } else if (m_isBusy) {
                m_isWanted = true; // a window that the link opened is having its first look
            } else {
                run();
            }
        });
}

/// What a look that is under way comes to would take its place, so it waits for that.
void FreeUpRow::refuseLink(const QString& sentence) {
    m_refusal = m_isBusy ? sentence : QString();
    if (!m_isBusy) {
        m_sentence->display(sentence);
    }
}

} // namespace vantor::hosts::app
