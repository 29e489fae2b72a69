// SPDX-License-Identifier: MIT
#include "platform/sysctl/sysctlbyname.hpp"

#include "platform/sysctl/SysctlSource.hpp"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>

namespace vantor::platform {

namespace {

int failed(int error) {
    errno = error;
    return -1;
}

/// What reads of numbers are told by.
bool isNumericLength(std::size_t length) {
    return length == 1 || length == 2 || length == 4 || length == 8;
}

/// A text never has a number's length: extra NULs tell it apart.
std::string textBytes(const std::string& text) {
    std::string bytes = text + '\0';
    while (isNumericLength(bytes.size())) {
        bytes += '\0';
    }
    return bytes;
}

bool fits(const SysctlValue& value, unsigned bits, SysctlSign sign) {
    const std::uint64_t half = std::uint64_t{1} << (bits - 1);
    if (value.text.starts_with('-') && value.number != 0) {
        return sign != SysctlSign::isUnsigned && ~value.number < half;
    }
    return value.number < half || (sign != SysctlSign::isSigned && value.number - half < half);
}

std::string numberBytes(std::uint64_t number, std::size_t width) {
    std::string bytes(width, '\0');
    const auto write = [&](auto value) { std::memcpy(bytes.data(), &value, sizeof value); };
    switch (width) {
    case 1:
        write(static_cast<std::uint8_t>(number));
        break;
    case 2:
        write(static_cast<std::uint16_t>(number));
        break;
    case 4:
        write(static_cast<std::uint32_t>(number));
        break;
    default:
        write(number);
    }
    return bytes;
}

/// The bytes that answer a call, or why there are none.
struct Bytes {
    std::string content;
    int error = 0;
};

/// `oldlen` is the buffer's length, 0 where only the size is asked for.
Bytes answer(const SysctlValue& value, std::size_t oldlen, SysctlSign sign) {
    if (!isNumericLength(oldlen)) {
        const bool isText =
            value.kind == SysctlValue::Kind::text || value.kind == SysctlValue::Kind::textNumber;
        return {isText ? textBytes(value.text)
                       : numberBytes(value.number, value.kind == SysctlValue::Kind::number4 ? 4 : 8)};
    }
    if (value.kind == SysctlValue::Kind::text) {
        return {{}, EINVAL};
    }
    return fits(value, static_cast<unsigned>(oldlen * 8), sign) ? Bytes{numberBytes(value.number, oldlen)}
                                                                : Bytes{{}, ERANGE};
}

} // namespace

SysctlSource& currentSysctlSource() {
    SysctlSource* const source = Current<SysctlSource>::get();
    return source != nullptr ? *source : defaultSysctlSource();
}

int readSysctl(const char* name, void* oldp, std::size_t* oldlenp, const void* newp, std::size_t newlen,
               SysctlSign sign) {
    if (newp != nullptr || newlen != 0) {
        return failed(EPERM);
    }
    const SysctlAnswer found = currentSysctlSource().read(name);
    if (found.error != 0) {
        return failed(found.error);
    }
    if (oldlenp == nullptr) {
        return 0;
    }
    const Bytes bytes = answer(found.value, oldp == nullptr ? 0 : *oldlenp, sign);
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
}

} // namespace vantor::platform
