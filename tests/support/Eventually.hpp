// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace vantor::tests {

/// Lets events happen until something has; false when it has not within half a minute, which only a busy
/// machine needs.
template<class Happened>
bool eventually(Happened happened) {
    const QDeadlineTimer end(30000);
    QTimer beat; // a loop of its own would end at once in a program that was told to quit
    beat.start(5);
    while (!happened() && !end.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return happened();
}

} // namespace vantor::tests
