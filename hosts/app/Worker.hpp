// SPDX-License-Identifier: MIT
#pragma once

#include "platform/time/DispatchQueue.hpp"

#include <memory>
#include <utility>

namespace vantor::hosts::app {

/// Ends with the object that is to hear of a work.
using Alive = std::shared_ptr<bool>;

/// Runs `work` on a worker and hands what it gives to `heard`, in a turn of the main loop, unless whom it is
/// for has gone by then. Main thread.
template<class Work, class Heard>
void onWorker(const Alive& alive, Work work, Heard heard) {
    platform::dispatch_async(
        platform::dispatch_get_global_queue(platform::QOS_CLASS_DEFAULT),
        [work = std::move(work), heard = std::move(heard), owner = std::weak_ptr(alive)] {
            auto result = std::make_shared<decltype(work())>(work());
            platform::dispatch_async(platform::dispatch_get_main_queue(), [result, heard, owner] {
                if (!owner.expired()) {
                    heard(*result);
                }
            });
        });
}

} // namespace vantor::hosts::app
