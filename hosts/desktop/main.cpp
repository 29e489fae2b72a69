// SPDX-License-Identifier: MIT
#include "hosts/common/HostMachine.hpp"
#include "hosts/desktop/HostText.hpp"
#include "hosts/desktop/Options.hpp"
#include "hosts/desktop/Snapshot.hpp"
#include "hosts/desktop/TerminationSignals.hpp"
#include "hosts/desktop/WidgetWindow.hpp"
#include "platform/foundation/NSUserDefaults.hpp"
#include "settings/SharedStore.hpp"

#include <malloc.h>

#include <QApplication>
#include <clocale>
#include <iostream>

namespace {

using namespace vantor::desktop;

/// A few threads that mostly sleep: one arena for all, and freed memory goes back early.
void keepMemorySmall() {
    ::mallopt(M_ARENA_MAX, 1);
    ::mallopt(M_TRIM_THRESHOLD, 128 * 1024);
    ::mallopt(M_MMAP_THRESHOLD, 128 * 1024);
}

void reportUnusableStore() {
    if (const std::optional<std::string> problem = vantor::platform::suiteProblem(vantor::sharedSuiteName)) {
        std::cerr << "vantor-widget: " << *problem << '\n';
    }
}

int run(const Options& options, int argc, char** argv) {
    // Static, so that it outlives the workers, which may be sampling when the window closes.
    static vantor::hosts::HostMachine machine(options.demo);
    reportUnusableStore();
    if (options.snapshot) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qunsetenv("QT_SCALE_FACTOR"); // --scale alone decides
    }
    QApplication::setStyle(QStringLiteral("fusion")); // the card paints itself: no theme's style is loaded
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vantor-widget"));
    QApplication::setDesktopFileName(QStringLiteral("vantor-widget"));
    QApplication::setLayoutDirection(isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    if (options.snapshot) {
        return writeSnapshot(options);
    }
    const TerminationSignals ending;
    WidgetWindow window(options, machine.machine());
    window.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    keepMemorySmall();
    std::setlocale(LC_ALL, "");
    const std::variant<Options, int> read = readOptions(argc, argv);
    if (const int* status = std::get_if<int>(&read)) {
        return *status;
    }
    return run(std::get<Options>(read), argc, argv);
}
