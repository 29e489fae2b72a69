// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/Terminfo.hpp"

#include "platform/posix/Environment.hpp"

#include <curses.h>
#include <term.h> // defines macros for short words: only here
#include <unistd.h>

namespace vantor::hosts::terminal {

namespace {

/// A string capability without its padding ("$<5/>"), which no terminal of today needs.
std::string capability(const char* name) {
    const char* const value = ::tigetstr(name);
    if (value == nullptr || value == reinterpret_cast<const char*>(-1)) { // NOLINT(performance-no-int-to-ptr)
        return {};
    }
    std::string text = value;
    for (std::size_t at = text.find("$<"); at != std::string::npos; at = text.find("$<", at)) {
        const std::size_t end = text.find('>', at);
        if (end == std::string::npos) {
            break;
        }
        text.erase(at, end - at + 1);
    }
    return text;
}

std::string filledIn(const std::string& format, int first, int second = 0) {
    const char* const text = ::tiparm(format.c_str(), first, second);
    return text != nullptr ? text : "";
}

/// For a terminal that the database does not know, such as one that is younger: nearly all of them understand
/// what xterm does. A machine without that entry has the oldest.
bool takeUsualEntry() {
    const std::string name = platform::posix::environmentText("TERM");
    int error = 0;
    return !name.empty() && name != "dumb" &&
           (::setupterm("xterm-256color", STDOUT_FILENO, &error) == 0 ||
            ::setupterm("ansi", STDOUT_FILENO, &error) == 0);
}

} // namespace

Terminfo Terminfo::fromEnvironment() {
    Terminfo terminal;
    int error = 0;
    if (::setupterm(nullptr, STDOUT_FILENO, &error) != 0 && !takeUsualEntry()) {
        return terminal;
    }
    terminal.m_address = capability("cup");
    terminal.clear = capability("clear");
    terminal.canAddress = !terminal.m_address.empty() && !terminal.clear.empty();
    terminal.plain = capability("sgr0");
    terminal.bold = capability("bold");
    terminal.dim = capability("dim");
    terminal.reverse = capability("rev");
    terminal.m_foreground = capability("setaf");
    terminal.m_background = capability("setab");
    terminal.colors = terminal.m_foreground.empty() ? 0 : ::tigetnum("colors");
    terminal.hasDirectColor = ::tigetflag("RGB") > 0 || ::tigetflag("Tc") > 0;
    terminal.hasMouse = capability("kmous") == "\033[M" || capability("kmous") == "\033[<";
    const std::string noMargins = capability("rmam");
    terminal.wrapsAtOnce = ::tigetflag("am") > 0 && ::tigetflag("xenl") <= 0 && noMargins.empty();
    terminal.enter = capability("smcup") + capability("civis") + noMargins;
    // To the last row first: where there is no other screen to go back to, the shell goes on below.
    constexpr int belowAll = 998; // terminals stop at their last row
    terminal.leave = terminal.plain + (noMargins.empty() ? "" : capability("smam")) +
                     (terminal.canAddress ? terminal.moveTo(0, belowAll) + capability("el") : "") +
                     capability("cnorm") + capability("rmcup");
    return terminal;
}

std::string Terminfo::moveTo(int column, int row) const {
    return filledIn(m_address, row, column);
}

std::string Terminfo::foreground(int index) const {
    if (index < colors) {
        return filledIn(m_foreground, index);
    }
    if (index < 16) {
        return "\033[" + std::to_string(index < 8 ? 30 + index : 90 + index - 8) + "m";
    }
    return "\033[38;5;" + std::to_string(index) + "m";
}

std::string Terminfo::background(int index) const {
    if (index < colors && !m_background.empty()) {
        return filledIn(m_background, index);
    }
    if (index < 16) {
        return "\033[" + std::to_string(index < 8 ? 40 + index : 100 + index - 8) + "m";
    }
    return "\033[48;5;" + std::to_string(index) + "m";
}

} // namespace vantor::hosts::terminal
