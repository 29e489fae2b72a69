// SPDX-License-Identifier: MIT
#pragma once

#include "platform/time/DispatchQueue.hpp"
#include "platform/time/RunLoop.hpp"

#include <deque>
#include <functional>

/// Turning the main loop without a screen: for pictures into files and for reports.
namespace vantor::hosts::common {

/// Turns the loop on the real clock until `done` says so, asked after each turn, or `atMost` seconds have
/// passed; false in that case. Sleeps between turns. Sets the loop's wake handler and takes it away again.
/// After a pause (`PauseWatch`), whose time does not count, `resumed` is called before the turn that follows.
bool turnUntil(const std::function<bool()>& done, double atMost,
               const std::function<void(platform::Instant now)>& resumed = {});

/// The same on a clock that jumps from one deadline to the next, with the sampling done on the calling
/// thread: what happens then depends on nothing but the machine's answers. For the demonstration's pictures
/// and reports.
class VirtualTime final : private platform::DispatchQueue {
public:
    VirtualTime();
    ~VirtualTime() override;
    VirtualTime(const VirtualTime&) = delete;
    VirtualTime& operator=(const VirtualTime&) = delete;
    bool turnUntil(const std::function<bool()>& done, double atMost);

private:
    void async(platform::WorkItem block) override { m_blocks.push_back(std::move(block)); }
    void sample();

    platform::Instant m_now{};
    std::deque<platform::WorkItem> m_blocks;
    platform::Current<platform::DispatchQueue> m_scope{*this};
};

} // namespace vantor::hosts::common
