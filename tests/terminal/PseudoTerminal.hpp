// SPDX-License-Identifier: MIT
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::tests {

/// A program on a terminal of its own. Every wait ends with what is waited for or after `patience`.
class PseudoTerminal {
public:
    static constexpr std::chrono::seconds patience{20};

    PseudoTerminal(std::vector<std::string> arguments, std::vector<std::string> environment, int columns = 80,
                   int rows = 24) {
        winsize size{static_cast<unsigned short>(rows), static_cast<unsigned short>(columns), 0, 0};
        int other = -1;
        ::openpty(&m_terminal, &other, nullptr, nullptr, &size);
        ::tcgetattr(m_terminal, &m_before);
        m_pid = ::fork();
        if (m_pid == 0) {
            ::close(m_terminal);
            ::login_tty(other);
            for (std::string& variable : environment) {
                ::putenv(variable.data());
            }
            std::vector<char*> words;
            for (std::string& argument : arguments) {
                words.push_back(argument.data());
            }
            words.push_back(nullptr);
            ::execv(words[0], words.data());
            ::_exit(127);
        }
        ::close(other);
    }
    ~PseudoTerminal() {
        if (m_pid > 0) {
            ::kill(m_pid, SIGKILL);
            ::waitpid(m_pid, nullptr, 0);
        }
        hangUp();
    }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    void send(std::string_view keys) const {
        [[maybe_unused]] auto n = ::write(m_terminal, keys.data(), keys.size());
    }
    void resize(int columns, int rows) const {
        const winsize size{static_cast<unsigned short>(rows), static_cast<unsigned short>(columns), 0, 0};
        ::ioctl(m_terminal, TIOCSWINSZ, &size);
    }
    void signal(int number) const { ::kill(m_pid, number); }
    void hangUp() {
        if (m_terminal >= 0) {
            ::close(m_terminal);
            m_terminal = -1;
        }
    }

    /// Reads until `text` has come since the last call that found something; what is before it goes
    /// to `before`, or is dropped.
    bool waitFor(std::string_view text, std::string* before = nullptr) {
        const auto end = std::chrono::steady_clock::now() + patience;
        for (;;) {
            if (const std::size_t at = m_output.find(text); at != std::string::npos) {
                if (before != nullptr) {
                    *before = m_output.substr(0, at);
                }
                m_output.erase(0, at + text.size());
                return true;
            }
            if (!readMore(end)) {
                return false;
            }
        }
    }

    /// Reads until the program has ended; its status as waitpid(2) gives it, or -1.
    int waitForEnd() {
        const auto end = std::chrono::steady_clock::now() + patience;
        int status = -1;
        while (::waitpid(m_pid, &status, WNOHANG) == 0) {
            if (std::chrono::steady_clock::now() > end) {
                return -1;
            }
            readMore(std::chrono::steady_clock::now() + std::chrono::milliseconds(20));
        }
        m_pid = -1;
        while (m_terminal >= 0 && readMore(std::chrono::steady_clock::now())) {
        }
        return status;
    }

    /// Output that was not asked for yet.
    [[nodiscard]] const std::string& output() const { return m_output; }
    /// Whether the line settings are those from before the program.
    [[nodiscard]] bool isRestored() const {
        termios now{};
        return ::tcgetattr(m_terminal, &now) == 0 && now.c_lflag == m_before.c_lflag &&
               now.c_iflag == m_before.c_iflag && now.c_oflag == m_before.c_oflag;
    }
    [[nodiscard]] pid_t process() const { return m_pid; }

private:
    bool readMore(std::chrono::steady_clock::time_point end) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        pollfd ready{m_terminal, POLLIN, 0};
        if (::poll(&ready, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0))) <= 0) {
            return false;
        }
        char buffer[4096];
        const ssize_t count = ::read(m_terminal, buffer, sizeof buffer);
        if (count <= 0) {
            return false; // EIO: nobody has the terminal open
        }
        m_output.append(buffer, static_cast<std::size_t>(count));
        return true;
    }

    int m_terminal = -1;
    pid_t m_pid = -1;
    termios m_before{};
    std::string m_output;
};

} // namespace vantor::tests
