// SPDX-License-Identifier: MIT
#include "hosts/app/AppWindow.hpp"
#include "hosts/app/Options.hpp"
#include "hosts/app/Snapshot.hpp"
#include "hosts/common/Complaints.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/HostDisposal.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/common/HostWorkload.hpp"
#include "hosts/common/Signals.hpp"
#include "hosts/common/SilentFolders.hpp"
#include "hosts/common/SmallMemory.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "hosts/qt/AppIcon.hpp"
#include "hosts/qt/SingleInstance.hpp"
#include "hosts/qt/ToolkitSetup.hpp"
#include "platform/core/StandardOutput.hpp"

#include <unistd.h>

#include <QApplication>
#include <QTimer>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace vantor;
using namespace vantor::hosts::app;

void say(const std::string& text) {
    hosts::common::complain("vantor-app", text);
}

int showWindow(const Options& options) {
    using hosts::qt::SingleInstance;
    // A made-up machine is another program's window.
    SingleInstance instance(options.demo ? "vantor-app-demo" : "vantor-app", windowWords(options));
    if (instance.role() == SingleInstance::Role::unanswered) {
        say("the one that runs already (process " + std::to_string(instance.other()) + ") does not answer");
        return 1;
    }
    if (instance.role() == SingleInstance::Role::second) {
        return 0;
    }
    const hosts::common::Signals ending({SIGTERM, SIGINT, SIGHUP},
                                        hosts::common::Signals::Again::actsByDefault);
    hosts::qt::quitWhenReadable(ending.number());
    AppWindow window(options);
    instance.setCallHandler(
        [&window](const SingleInstance::Words& words) { window.heed(optionsFromWords(words)); });
    window.heed(options);
    QTimer::singleShot(0, &window,
                       [] { QApplication::setWindowIcon(hosts::qt::appIcon()); }); // after the first picture
    return QApplication::exec();
}

int run(const Options& options, int argc, char** argv) {
    if (const std::optional<std::string> silent = hosts::common::settleFolders()) {
        say(*silent + hosts::common::noAnswer);
        return 1;
    }
    hosts::qt::setEnvironment(options.snapshot.has_value());
    // Never destroyed, not even with the static objects: workers may be sampling when the window closes.
    [[maybe_unused]] static const auto& machine = *new hosts::common::HostMachine(options.demo);
    [[maybe_unused]] static const auto& workload = *new hosts::common::HostWorkload(options.demo);
    [[maybe_unused]] static const auto& disposal = *new hosts::common::HostDisposal(options.demo);
    hosts::common::Complaints complaints("vantor-app");
    complaints.tellStore();
    QApplication::setStyle(QStringLiteral("fusion")); // widgets paint themselves: no theme's style is loaded
    QApplication application(argc, argv);
    hosts::qt::nameApplication("vantor-app");
    const bool canWrite = hosts::qt::hasFonts();
    if (!canWrite) {
        say("there is no font to write with: each letter is drawn as a box");
    }
    if (!options.snapshot) {
        return showWindow(options);
    }
    const int status = writeSnapshot(options);
    complaints.tell(hosts::common::currentFailures());
    return canWrite ? status : 1;
}

} // namespace

int main(int argc, char** argv) {
    hosts::common::holdClosedStreams();
    hosts::common::letNobodyWaitForErrors();
    hosts::common::letWritesFail();
    hosts::common::keepMemorySmall();
    platform::setStandardOutput(hosts::common::unhurriedStream(STDOUT_FILENO));
    std::setlocale(LC_ALL, "");
    const std::variant<Options, int> read = readOptions(argc, argv);
    if (const int* status = std::get_if<int>(&read)) {
        return *status;
    }
    const auto& options = std::get<Options>(read);
    if (!options.snapshot && !hosts::qt::hasDisplay()) {
        say("there is no display; --snapshot draws a page into a file, and vantor prints it");
        return 1;
    }
    hosts::qt::quietRemarks(say);
    const int status = run(options, argc, argv);
    std::fflush(nullptr);
    // Not through the destructors of static objects, ours and the libraries': a worker may still be sampling.
    std::_Exit(status);
}
