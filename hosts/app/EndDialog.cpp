// SPDX-License-Identifier: MIT
#include "hosts/app/EndDialog.hpp"

#include "actions/ActionWords.hpp"
#include "hosts/app/Worker.hpp"
#include "hosts/qt/HostText.hpp"

#include <QTimer>
#include <chrono>
#include <memory>
#include <string>

namespace vantor::hosts::app {

namespace {

constexpr std::chrono::milliseconds betweenLooks{400};

/// What a step of the action came to.
struct Step {
    std::string sentence;
    bool isOver = false;
    bool mayKill = false;
};

Step stepOf(EndApplication& action, const EndingState& state, const std::string& name) {
    Step step{endResult(state, name), state.left == 0, action.mayKill()};
    if (step.mayKill) {
        step.sentence = killOffer(name);
    }
    for (const std::string& problem : state.problems) {
        step.sentence += ' ' + problem;
    }
    return step;
}

/// Goes with its dialog. Its steps come one after the other, since the action is for one thread at a time.
class Ending final : public QObject {
public:
    Ending(Sheet& sheet, const platform::ApplicationUse& application, std::function<void()> changed)
        : QObject(&sheet), m_sheet(sheet), m_name(application.name), m_changed(std::move(changed)) {
        m_looks.setInterval(betweenLooks);
        m_looks.callOnTimeout(this, [this] { look(); });
        connect(&sheet.action(), &QAbstractButton::clicked, this, [this] { act(); });
        sheet.action().setEnabled(false);
        onWorker(
            m_alive, [application] { return std::make_shared<EndApplication>(application); },
            [this](const std::shared_ptr<EndApplication>& action) { offer(action); });
    }

private:
    void offer(const std::shared_ptr<EndApplication>& action) {
        m_action = action;
        m_sheet.setSentence(QString::fromStdString(endOffer(*action, m_name)));
        if (action->refusal() != EndRefusal::none) {
            close();
        }
        m_sheet.action().setEnabled(true);
    }

    void close() {
        m_looks.stop();
        m_sheet.setAction({});
        m_sheet.setCancel(qt::hostText("app_CLOSE"));
    }

    /// The first press ends it, the second one by force.
    void act() {
        const bool isSecond = m_mayKill;
        m_sheet.action().setEnabled(false);
        m_sheet.setCancel(qt::hostText("app_CLOSE"));
        submit([isSecond](EndApplication& action) { return isSecond ? action.kill() : action.terminate(); });
        m_looks.start();
    }

    void look() {
        if (!m_isBusy) {
            submit([](EndApplication& action) { return action.state(); });
        }
    }

    template<class Work>
    void submit(Work work) {
        m_isBusy = true;
        onWorker(
            m_alive,
            [action = m_action, name = m_name, work] { return stepOf(*action, work(*action), name); },
            [this](const Step& step) { show(step); });
    }

    void show(const Step& step) {
        m_isBusy = false;
        m_sheet.setSentence(QString::fromStdString(step.sentence));
        if (step.isOver) {
            close();
            m_changed();
        } else if (step.mayKill && !m_mayKill) {
            m_mayKill = true;
            m_sheet.setAction(qt::hostText("app_KILL"));
            m_sheet.action().setEnabled(true);
        }
    }

    Sheet& m_sheet;
    const std::string m_name;
    std::function<void()> m_changed;
    QTimer m_looks;
    Alive m_alive = std::make_shared<bool>(true);
    std::shared_ptr<EndApplication> m_action;
    bool m_isBusy = false;
    bool m_mayKill = false;
};

} // namespace

Sheet* askToEnd(QWidget* parent, const Look& look, const platform::ApplicationUse& application,
                const std::function<void()>& changed) {
    auto* const sheet = new Sheet(parent);
    sheet->setTitle(qt::hostText("app_ENDTITLE", "name", application.name));
    sheet->setSentence(qt::hostText("app_LOOKING"));
    sheet->setAction(qt::hostText("app_ENDNOW"));
    applyLook(*sheet, look);
    new Ending(*sheet, application, changed);
    sheet->open();
    return sheet;
}

} // namespace vantor::hosts::app
