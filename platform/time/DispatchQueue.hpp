// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/WorkItem.hpp"

#include <cstdint>

/// The two queues of the widget: the main queue, whose blocks run in the main loop's turns, and the global
/// queue of default quality of service, a small pool of worker threads.
namespace vantor::platform {

/// A place to submit blocks to, which run with what is current where they are submitted. Submitting is safe
/// on any thread.
class DispatchQueue {
public:
    virtual ~DispatchQueue() = default;
    virtual void async(WorkItem block) = 0;
};

inline constexpr long QOS_CLASS_DEFAULT = 0x15;

/// The main queue: first in, first out, on the main thread.
DispatchQueue& dispatch_get_main_queue();

/// The global concurrent queue: at most four threads, started when first needed; an idle one costs nothing.
/// One thread runs what is submitted together; others join in where it waits (`dispatch_will_wait`) or hangs.
/// The platform's call names a class, of which there is only the default one here. A `Current<DispatchQueue>`
/// puts another queue in its place, such as a test's, whose blocks run when the test says so.
DispatchQueue& dispatch_get_global_queue(long qualityOfService);

/// Submits a block and returns at once.
void dispatch_async(DispatchQueue& queue, WorkItem block);

/// Says, from inside a block of the global queue, that it is going to wait for something slow: blocks behind
/// it are then run by another thread. Does nothing elsewhere.
void dispatch_will_wait();

/// A number of its own for each block that a worker of the global queue runs, as asked from inside the block;
/// 0 elsewhere. It tells whoever answers questions which of them belong to one block.
[[nodiscard]] std::uint64_t currentWorkItem();

/// True on the thread that started the program (`NSThread` `isMainThread`).
[[nodiscard]] bool isMainThread();

} // namespace vantor::platform
