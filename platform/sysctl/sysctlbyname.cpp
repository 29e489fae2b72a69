// SPDX-License-Identifier: MIT
#include "platform/sysctl/sysctlbyname.hpp"

#include "platform/sysctl/SysctlSource.hpp"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string>

namespace vantor::platform {

namespace {

std::atomic<SysctlSource*> sourceInPlace{nullptr};

SysctlSource& currentSource() {
    SysctlSource* const source = sourceInPlace.load();
    return source != nullptr ? *source : defaultSysctlSource();
}

int failed(int error) {
    errno = error;
    return -1;
}

bool isNumericLength(std::size_t length) {
    return length == 1 || length == 2 || length == 4 || length == 8;
}

/// The bytes that answer a call. `error` where the buffer cannot take them.
struct Bytes {
    std::string content;
    int error = 0;
};

template<class T>
Bytes bytesOf(std::uint64_t number) {
    const T value = static_cast<T>(number);
    Bytes bytes{std::string(sizeof value, '\0')};
    std::memcpy(bytes.content.data(), &value, sizeof value);
    return bytes;
}

Bytes textBytes(const std::string& text) {
    return {text + '\0'};
}

/// `oldlen` is the buffer's length, 0 where only the size is asked for.
Bytes answer(const SysctlValue& value, std::size_t oldlen) {
    const auto asSigned = static_cast<std::int64_t>(value.number);
    const bool fitsInt32 = asSigned >= std::numeric_limits<std::int32_t>::min() &&
                           asSigned <= std::numeric_limits<std::int32_t>::max();
    switch (value.kind) {
    case SysctlValue::Kind::number4:
        return bytesOf<std::uint32_t>(value.number);
    case SysctlValue::Kind::number8:
        if (oldlen == sizeof(std::uint32_t)) {
            return fitsInt32 ? bytesOf<std::uint32_t>(value.number) : Bytes{{}, ERANGE};
        }
        return bytesOf<std::uint64_t>(value.number);
    case SysctlValue::Kind::number8Only:
        return bytesOf<std::uint64_t>(value.number);
    case SysctlValue::Kind::textNumber: {
        if (!isNumericLength(oldlen)) {
            Bytes bytes = textBytes(value.text);
            if (isNumericLength(bytes.content.size())) {
                bytes.content += '\0';
            }
            return bytes;
        }
        // The upper half of a wider buffer stays as it is, so 4 bytes of a negative number would not be it.
        const bool negative = value.text.starts_with('-');
        const bool four =
            fitsInt32 && negative == (asSigned < 0) && (!negative || oldlen < sizeof(std::uint64_t));
        return four ? bytesOf<std::uint32_t>(value.number) : bytesOf<std::uint64_t>(value.number);
    }
    case SysctlValue::Kind::text:
        break;
    }
    return textBytes(value.text);
}

} // namespace

SysctlSourceScope::SysctlSourceScope(SysctlSource& source) : m_before(sourceInPlace.exchange(&source)) {}

SysctlSourceScope::~SysctlSourceScope() {
    sourceInPlace.store(m_before);
}

int sysctlbyname(const char* name, void* oldp, std::size_t* oldlenp, const void* newp,
                 std::size_t newlen) try {
    if (newp != nullptr || newlen != 0) {
        return failed(EPERM);
    }
    const SysctlAnswer found = currentSource().read(name);
    if (found.error != 0) {
        return failed(found.error);
    }
    if (oldlenp == nullptr) {
        return 0;
    }
    const Bytes bytes = answer(found.value, oldp == nullptr ? 0 : *oldlenp);
    if (bytes.error != 0) {
        return failed(bytes.error);
    }
    if (oldp != nullptr) {
        if (*oldlenp < bytes.content.size()) {
            return failed(ENOMEM);
        }
        std::memcpy(oldp, bytes.content.data(), bytes.content.size());
    }
    *oldlenp = bytes.content.size();
    return 0;
} catch (const std::bad_alloc&) {
    return failed(ENOMEM);
}

} // namespace vantor::platform
