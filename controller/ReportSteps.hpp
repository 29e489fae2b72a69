// SPDX-License-Identifier: MIT
#pragma once

#include "platform/time/DispatchQueue.hpp"

#include <utility>

namespace vantor {

/// The shape of every report: `sample` on the global queue, then `display`, with what it returned, on the
/// main queue. Both hold what they capture, so the controller is there when the figures arrive.
template<class Sample, class Display>
void report(Sample sample, Display display) {
    using platform::dispatch_async;
    dispatch_async(platform::dispatch_get_global_queue(platform::QOS_CLASS_DEFAULT),
                   [sample = std::move(sample), display = std::move(display)]() mutable {
                       dispatch_async(
                           platform::dispatch_get_main_queue(),
                           [figures = sample(), display = std::move(display)] { display(figures); });
                   });
}

} // namespace vantor
