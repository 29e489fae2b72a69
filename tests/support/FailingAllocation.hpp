// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <limits>
#include <utility>

namespace vantor::tests {

/// Watches this thread's operator new while it lives: counts, measures, and makes one allocation fail. A test
/// that uses it compiles FailingAllocation.cpp, which replaces the operators.
class AllocationWatch {
public:
    static constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

    /// `failing` is the number of the allocation to fail, from 1 on.
    explicit AllocationWatch(std::size_t failing = never);
    ~AllocationWatch();
    AllocationWatch(const AllocationWatch&) = delete;
    AllocationWatch& operator=(const AllocationWatch&) = delete;

    [[nodiscard]] std::size_t allocations() const;
    [[nodiscard]] std::size_t mostBytes() const;      ///< the most that was held at once
    [[nodiscard]] std::size_t allocatedBytes() const; ///< of all allocations together
    [[nodiscard]] std::ptrdiff_t heldBytes() const;   ///< held now, beyond what was held at the start
    [[nodiscard]] bool hasFailed() const;
};

/// Calls `run` on what `prepare` gives, failing its first allocation, then its second, and so on until none
/// fails; `check` sees each result. Only `run` is watched. Gives the number of runs that failed an
/// allocation.
template<class Prepare, class Run, class Check>
std::size_t failEachAllocation(Prepare prepare, Run run, Check check) {
    for (std::size_t n = 1;; ++n) {
        auto input = prepare();
        bool hasFailed = false;
        const auto result = [&] {
            const AllocationWatch watch(n);
            auto outcome = run(std::move(input));
            hasFailed = watch.hasFailed();
            return outcome;
        }();
        check(result, hasFailed);
        if (!hasFailed) {
            return n - 1;
        }
    }
}

} // namespace vantor::tests
