// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/SingleInstance.hpp"

#include <QObject>
#include <functional>
#include <memory>
#include <string>

class QApplication;

/// What the mains of the programs with a window have in common.
namespace vantor::hosts::window {

/// Settles the standard streams, the log, the memory and the locale. First in main.
void settleProcess();

/// Ends the process, after what was printed has gone out.
[[noreturn]] void endProcess(int status);

/// The toolkit's application of a program, named, and without any theme's style. Says on standard error where
/// there is no font to write with.
class Application {
public:
    Application(const char* program, int& argc, char** argv);

    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    [[nodiscard]] bool canWrite() const { return m_canWrite; }

private:
    std::unique_ptr<QApplication> m_toolkit;
    bool m_canWrite = false;
};

/// Makes the window that is to be shown, and lets it hear the words of later starts.
using OpenWindow = std::function<std::unique_ptr<QObject>(qt::SingleInstance& instance)>;

/// Shows a window until the program is to end, unless one of this `name` runs already, which hears the
/// `words` instead. Gives the exit status: 1, and a line on standard error, where that one does not answer.
[[nodiscard]] int showWindow(const char* program, const std::string& name,
                             const qt::SingleInstance::Words& words, const OpenWindow& open);

} // namespace vantor::hosts::window
