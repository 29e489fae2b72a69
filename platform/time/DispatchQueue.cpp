// SPDX-License-Identifier: MIT
#include "platform/time/DispatchQueue.hpp"

#include "platform/time/RunLoop.hpp"
#include "platform/time/WorkerPool.hpp"

#include <thread>
#include <utility>

namespace vantor::platform {

namespace {

const std::thread::id mainThread = std::this_thread::get_id();

class MainQueue final : public DispatchQueue {
public:
    void async(WorkItem block) override { RunLoop::main().post(std::move(block)); }
};

} // namespace

DispatchQueue& dispatch_get_main_queue() {
    static MainQueue& queue = *new MainQueue; // never destroyed: workers outlive the end of main
    return queue;
}

DispatchQueue& dispatch_get_global_queue(long /*qualityOfService*/) {
    if (DispatchQueue* const replacement = Current<DispatchQueue>::get()) {
        return *replacement;
    }
    // Never destroyed: a worker that hangs in a dead file system must not hold up the end of the process.
    static WorkerPool& pool = *new WorkerPool(4);
    return pool;
}

void dispatch_async(DispatchQueue& queue, WorkItem block) {
    queue.async(std::move(block));
}

bool isMainThread() {
    return std::this_thread::get_id() == mainThread;
}

} // namespace vantor::platform
