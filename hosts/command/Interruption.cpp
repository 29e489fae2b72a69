// SPDX-License-Identifier: MIT
#include "hosts/command/Interruption.hpp"

#include <atomic>
#include <csignal>
#include <initializer_list>

namespace vantor::hosts::command {

namespace {

std::atomic<bool> stopped{false};
static_assert(std::atomic<bool>::is_always_lock_free, "it is set in a signal handler");

} // namespace

void stopWhenInterrupted() {
    for (const int signal : {SIGINT, SIGTERM}) {
        std::signal(signal, [](int again) {
            stopped = true;
            std::signal(again, SIG_DFL);
        });
    }
}

bool isInterrupted() {
    return stopped;
}

} // namespace vantor::hosts::command
