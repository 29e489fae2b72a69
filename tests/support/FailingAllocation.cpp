// SPDX-License-Identifier: MIT
#include "FailingAllocation.hpp"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

struct Watched {
    bool isOn = false;
    std::size_t failing = 0;
    std::size_t allocations = 0;
    std::size_t bytes = 0;
    std::ptrdiff_t held = 0;
    std::ptrdiff_t most = 0;
};
thread_local Watched watched;

void* allocate(std::size_t size) noexcept {
    if (watched.isOn && ++watched.allocations == watched.failing) {
        return nullptr;
    }
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (watched.isOn && memory != nullptr) {
        watched.bytes += size;
        watched.held += static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
        watched.most = std::max(watched.most, watched.held);
    }
    return memory;
}

void release(void* memory) noexcept {
    if (watched.isOn && memory != nullptr) {
        watched.held -= static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
    }
    std::free(memory);
}

} // namespace

// The forms for arrays call these.
void* operator new(std::size_t size) {
    if (void* const memory = allocate(size)) {
        return memory;
    }
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void operator delete(void* memory) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}

namespace vantor::tests {

AllocationWatch::AllocationWatch(std::size_t failing) {
    watched = {true, failing};
}
AllocationWatch::~AllocationWatch() {
    watched.isOn = false;
}
std::size_t AllocationWatch::allocations() const {
    return watched.allocations;
}
std::size_t AllocationWatch::mostBytes() const {
    return static_cast<std::size_t>(watched.most);
}
std::size_t AllocationWatch::allocatedBytes() const {
    return watched.bytes;
}
std::ptrdiff_t AllocationWatch::heldBytes() const {
    return watched.held;
}
bool AllocationWatch::hasFailed() const {
    return watched.allocations >= watched.failing;
}

} // namespace vantor::tests
