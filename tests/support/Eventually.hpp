// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace vantor::tests {

/// Lets events happen until something has; false when it has not within five seconds.
template<class Happened>
bool eventually(Happened happened) {
    const QDeadlineTimer end(5000);
    while (!happened() && !end.hasExpired()) {
        QEventLoop loop;
        QTimer::singleShot(5, &loop, &QEventLoop::quit);
        loop.exec(QEventLoop::AllEvents);
    }
    return happened();
}

} // namespace vantor::tests
