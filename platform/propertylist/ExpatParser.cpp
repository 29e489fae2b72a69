// SPDX-License-Identifier: MIT
#include "platform/propertylist/ExpatParser.hpp"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace vantor::platform {

namespace {

// A block's size lies in front of it: operator new cannot resize, and expat does not say how much to carry
// over.
constexpr std::size_t headSize = alignof(std::max_align_t);

void* allocate(std::size_t size) {
    if (size > std::numeric_limits<std::size_t>::max() - headSize) {
        return nullptr;
    }
    auto* const block = static_cast<std::byte*>(::operator new(headSize + size, std::nothrow));
    if (block == nullptr) {
        return nullptr;
    }
    std::memcpy(block, &size, sizeof size);
    return block + headSize;
}

void release(void* memory) {
    if (memory != nullptr) {
        ::operator delete(static_cast<std::byte*>(memory) - headSize);
    }
}

void* resize(void* memory, std::size_t size) {
    void* const moved = allocate(size);
    if (moved != nullptr && memory != nullptr) {
        std::size_t before = 0;
        std::memcpy(&before, static_cast<std::byte*>(memory) - headSize, sizeof before);
        std::memcpy(moved, memory, std::min(before, size));
        release(memory);
    }
    return moved;
}

} // namespace

ExpatParser makeExpatParser() {
    constexpr XML_Memory_Handling_Suite memory{allocate, resize, release};
    ExpatParser parser(XML_ParserCreate_MM(nullptr, &memory, nullptr));
    if (!parser) {
        throw std::bad_alloc();
    }
    return parser;
}

std::size_t byteIndex(const ExpatParser& parser) {
    // From 2.9 on the function of the plain name, whose result may have too few bits, is deprecated.
#if XML_MAJOR_VERSION > 2 || XML_MINOR_VERSION >= 9
    return static_cast<std::size_t>(XML_GetCurrentByteIndex64(parser.get()));
#else
    return static_cast<std::size_t>(XML_GetCurrentByteIndex(parser.get()));
#endif
}

} // namespace vantor::platform
