// SPDX-License-Identifier: MIT
#include "hosts/window/WindowProgram.hpp"

#include "hosts/common/Signals.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "hosts/qt/AppIcon.hpp"
#include "hosts/qt/ToolkitSetup.hpp"
#include "platform/core/StandardOutput.hpp"

#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <QTimer>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace vantor::hosts::window {

namespace {

/// For a program of a few threads that mostly sleep: one arena for all, and freed memory goes back early.
/// Before there are other threads.
void keepMemorySmall() {
    constexpr int kept = 128 * 1024; // bytes
    ::mallopt(M_ARENA_MAX, 1);
    ::mallopt(M_TRIM_THRESHOLD, kept);
    ::mallopt(M_MMAP_THRESHOLD, kept);
}

} // namespace

void settleProcess() {
    common::holdClosedStreams();
    common::letNobodyWaitForErrors();
    common::letWritesFail();
    keepMemorySmall();
    platform::setStandardOutput(common::unhurriedStream(STDOUT_FILENO));
    std::setlocale(LC_ALL, "");
}

void endProcess(int status) {
    std::fflush(nullptr);
    // Not through the destructors of static objects, ours and the libraries': a worker may still be sampling.
    std::_Exit(status);
}

Application::Application(const char* program, int& argc, char** argv) {
    QApplication::setStyle(QStringLiteral("fusion")); // widgets paint themselves: no theme's style is loaded
    m_toolkit = std::make_unique<QApplication>(argc, argv);
    qt::nameApplication(program);
    m_canWrite = qt::hasFonts();
    if (!m_canWrite) {
        common::complain(program, "there is no font to write with: each letter is drawn as a box");
    }
}

Application::~Application() = default;

int showWindow(const char* program, const std::string& name, const qt::SingleInstance::Words& words,
               const OpenWindow& open) {
    using qt::SingleInstance;
    SingleInstance instance(name, words);
    if (instance.role() == SingleInstance::Role::unanswered) {
        common::complain(program, "the one that runs already (process " + std::to_string(instance.other()) +
                                      ") does not answer");
        return 1;
    }
    if (instance.role() == SingleInstance::Role::second) {
        return 0;
    }
    const common::Signals ending({SIGTERM, SIGINT, SIGHUP}, common::Signals::Again::actsByDefault);
    qt::quitWhenReadable(ending.number());
    const std::unique_ptr<QObject> window = open(instance);
    QTimer::singleShot(0, window.get(),
                       [] { QApplication::setWindowIcon(qt::appIcon()); }); // after the first picture
    return QApplication::exec();
}

} // namespace vantor::hosts::window
