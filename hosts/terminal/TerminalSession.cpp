// SPDX-License-Identifier: MIT
#include "hosts/terminal/TerminalSession.hpp"

#include "hosts/common/HostMachine.hpp"
#include "hosts/terminal/WallPage.hpp"
#include "hosts/terminal/WidgetPage.hpp"
#include "hosts/terminal/screen/Input.hpp"
#include "hosts/terminal/screen/ScreenWriter.hpp"
#include "hosts/terminal/screen/TerminalDevice.hpp"
#include "hosts/terminal/screen/TerminalState.hpp"
#include "hosts/terminal/text/DisplayText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"
#include "platform/posix/EventDescriptor.hpp"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace vantor::hosts::terminal {

using platform::Instant;
using platform::RunLoop;

namespace {

constexpr std::chrono::milliseconds firstPicture{20};   // the longest wait for figures before drawing without
constexpr std::chrono::milliseconds lastAnswers{100};   // for a terminal that is slow to say what it is
constexpr std::chrono::milliseconds continued{100};     // for the signal that ended a stop to be taken
constexpr std::chrono::milliseconds escapePatience{50}; // for the rest of a sequence, over a slow line
constexpr const char* mouseOn = "\033[?1000h\033[?1006h";
constexpr const char* mouseOff = "\033[?1006l\033[?1000l";
constexpr const char* askForBackground = "\033]11;?\033\\\033[c";

Instant clockNow() {
    return std::chrono::steady_clock::now();
}

/// Makes what is shown, once it is known what the terminal can.
using PageMaker = std::function<std::unique_ptr<Page>(ColorDepth depth, bool canAddress)>;

class TerminalSession {
public:
    TerminalSession(const Options& options, const TerminalSignals& signals, std::string name,
                    const PageMaker& makePage)
        : m_options(options),
          m_signals(signals),
          m_environment(TerminalEnvironment::fromProcess()),
          m_name(std::move(name)),
          m_state(m_device.number(), enterBytes(), leaveBytes()),
          m_depth(colorDepthFor(options.color, m_environment, m_terminal)),
          m_writer(m_terminal, m_depth),
          m_page(makePage(m_depth, m_terminal.canAddress)) {
        m_look.glyphs = options.glyphs.value_or(glyphsFor(m_environment, localeIsUtf8()));
        m_look.appearance = options.appearance.value_or(
            appearanceFrom(m_environment.colorFgBg).value_or(platform::Appearance::dark));
        m_look.isRightToLeft =
            holdsRightToLeft(harmlessCharacters(platform::NSLocalizedString("host_STORAGE")));
    }

    int run() {
        if (!m_state.enter()) {
            std::perror("vantor-term: the terminal");
            return 1;
        }
        if (!m_options.appearance && answersQueries(m_environment, m_terminal)) {
            m_device.write(askForBackground);
            m_awaitsAnswers = true;
        }
        RunLoop::main().setWakeHandler([this] { m_wake.wake(); });
        m_start = clockNow();
        while (!m_page->hasQuit() && m_endSignal == 0 && m_isThere) {
            turn(clockNow());
            wait();
        }
        RunLoop::main().setWakeHandler({});
        awaitLastAnswers();
        m_device.flush();
        m_state.leave();
        return 0;
    }

    /// The signal that ended the session; 0 when the user did.
    [[nodiscard]] int endSignal() const { return m_endSignal; }

private:
    [[nodiscard]] bool hasMouse() const { return m_terminal.hasMouse && !m_options.noMouse; }
    [[nodiscard]] std::string enterBytes() const {
        return m_terminal.enter + (hasMouse() ? mouseOn : "") + titleOn(m_environment, m_terminal, m_name);
    }
    [[nodiscard]] std::string leaveBytes() const {
        return titleOff(m_environment, m_terminal) + (hasMouse() ? mouseOff : "") +
               (m_terminal.canAddress ? m_terminal.leave : "\r\n");
    }

    /// What is due now: the loop's work and a picture. While the terminal takes no bytes nothing is due, so
    /// that a terminal stopped with Ctrl-S costs nothing.
    void turn(Instant now) {
        if (m_device.isBlocked()) {
            return;
        }
        if (m_escapeEnd && now >= *m_escapeEnd) {
            m_escapeEnd.reset();
            m_page->take(m_parser.endEscape(), now);
        }
        m_page->turn(now);
        if (now - m_start < firstPicture && !m_page->hasFigures()) {
            return;
        }
        const std::optional<Instant> next = m_page->nextChange();
        if (m_page->takeChange() || m_isStale) {
            if (m_isStale) {
                m_size = m_device.size();
                m_isStale = false;
            }
            // The last column of a terminal that only prints would go on to the next line.
            const Size size = m_terminal.canAddress ? m_size : Size{std::max(m_size.width - 1, 1), 1};
            show(m_page->draw(size, m_look, now));
        } else if (next && now >= *next) {
            show(m_page->step(m_look, now));
        }
    }

    void show(const Grid& picture) { m_isThere = m_device.write(m_writer.update(picture)) && m_isThere; }

    [[nodiscard]] timespec untilNext() const {
        Instant next = Instant::max();
        for (const std::optional<Instant>& instant :
             {RunLoop::main().nextDeadline(RunLoop::tolerance), m_page->nextChange(), m_escapeEnd}) {
            next = instant ? std::min(next, *instant) : next;
        }
        if (m_isStale) {
            next = std::min(next, m_start + firstPicture);
        }
        const std::chrono::nanoseconds left = std::max<std::chrono::nanoseconds>(next - clockNow(), {});
        const auto seconds = std::chrono::floor<std::chrono::seconds>(left);
        return {static_cast<std::time_t>(std::min<std::int64_t>(seconds.count(), 1'000'000'000)),
                static_cast<long>((left - seconds).count())};
    }

    void wait() {
        const bool isBlocked = m_device.isBlocked();
        std::array<pollfd, 3> ready{{
            {m_device.number(), static_cast<short>(isBlocked ? POLLIN | POLLOUT : POLLIN), 0},
            {m_signals.number(), POLLIN, 0},
            {m_wake.number(), static_cast<short>(isBlocked ? 0 : POLLIN), 0},
        }};
        const timespec time = untilNext();
        ::ppoll(ready.data(), ready.size(), isBlocked ? nullptr : &time, nullptr);
        if (ready[2].revents != 0) {
            m_wake.drain();
        }
        if (ready[0].revents != 0) {
            m_isThere = m_device.flush() && takeInput() && m_isThere;
        }
        if (ready[1].revents != 0) {
            for (const int signal : m_signals.take()) {
                takeSignal(signal);
            }
        }
    }

    bool takeInput() {
        std::string bytes;
        const bool isThere = m_device.read(bytes);
        for (const Input& input : m_parser.parse(bytes)) {
            std::visit([this](const auto& what) { take(what); }, input);
        }
        m_escapeEnd = m_parser.holdsEscape() ? std::optional(clockNow() + escapePatience) : std::nullopt;
        return isThere;
    }

    void take(const KeyPress& press) {
        constexpr char32_t control = 0x1F; // what Ctrl leaves of a letter
        if (press.key == (U'L' & control)) {
            m_writer.forget();
            m_isStale = true;
        } else {
            m_page->take(press, clockNow());
        }
    }
    void take(CursorKey key) { m_page->take(key, clockNow()); }
    void take(const Click& click) { m_page->take(click, clockNow()); }
    void take(const Wheel& wheel) { m_page->take(wheel, clockNow()); }
    void take(const Background& background) {
        m_isStale = m_isStale || m_look.background != background.rgb;
        m_look.background = background.rgb;
        m_look.appearance = appearanceOf(background);
    }
    void take(const AnswersEnded& /*ended*/) { m_awaitsAnswers = false; }

    void takeSignal(int signal) {
        switch (signal) {
        case SIGWINCH:
            m_isStale = true;
            break;
        case SIGTSTP:
            m_page->leave();
            m_state.leave();
            common::Signals::actOn(signal); // stops here until the shell continues it
            // That is told as well, be it a moment later or in another thread; to come back for both would
            // make two reports in one instant. Where nobody can stop us, nobody continues us.
            m_signals.await(SIGCONT, continued);
            comeBack();
            break;
        case SIGCONT: // after a stop that gave no notice
            comeBack();
            break;
        default:
            m_endSignal = signal;
        }
    }

    void comeBack() {
        m_device.dropWaiting();
        m_isThere = m_state.enter() && m_isThere;
        m_writer.forget();
        m_isStale = true;
        m_page->comeBack();
    }

    /// An answer that comes after the end would be typed into the shell.
    void awaitLastAnswers() {
        const Instant end = clockNow() + lastAnswers;
        while (m_awaitsAnswers && m_isThere && clockNow() < end) {
            pollfd ready{m_device.number(), POLLIN, 0};
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - clockNow());
            ::poll(&ready, 1, static_cast<int>(left.count()));
            m_isThere = ready.revents == 0 || takeInput();
        }
    }

    const Options& m_options;
    const TerminalSignals& m_signals;
    const TerminalEnvironment m_environment;
    const Terminfo m_terminal = Terminfo::fromEnvironment();
    const std::string m_name;
    TerminalDevice m_device{STDOUT_FILENO};
    TerminalState m_state;
    const ColorDepth m_depth;
    ScreenWriter m_writer;
    const std::unique_ptr<Page> m_page;
    platform::posix::EventDescriptor m_wake;
    InputParser m_parser;
    Look m_look;
    Size m_size;
    Instant m_start;
    std::optional<Instant> m_escapeEnd; ///< when an escape was the key of that name
    bool m_isStale = true;
    bool m_awaitsAnswers = false;
    bool m_isThere = true;
    int m_endSignal = 0;
};

/// A signal that ended the session takes its course when nothing of it is left.
int runSession(const Options& options, const TerminalSignals& signals, const std::string& name,
               const PageMaker& makePage) {
    int status = 0;
    int signal = 0;
    {
        TerminalSession session(options, signals, name, makePage);
        status = session.run();
        signal = session.endSignal();
    }
    if (signal != 0) {
        common::Signals::actOn(signal);
    }
    return status;
}

} // namespace

int runTerminal(const Options& options, const TerminalSignals& signals, common::RemoteNode* node) {
    const std::string name = node != nullptr ? node->name() : common::machineName(options.demo);
    return runSession(options, signals, name, [&](ColorDepth, bool canMove) {
        return std::make_unique<WidgetPage>(name, options.interval, !options.compact, node, canMove);
    });
}

int runTerminal(const Options& options, const TerminalSignals& signals, common::FleetHost& fleet) {
    return runSession(options, signals, fleet.name(), [&](ColorDepth depth, bool) {
        return std::make_unique<WallPage>(fleet, options.fleet, depth);
    });
}

} // namespace vantor::hosts::terminal
