// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/Current.hpp"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor::platform {

/// What a sysctl key holds. The widths are those that a question for the size is answered with: a read gets
/// a number in whatever width it asks for.
struct SysctlValue {
    enum class Kind : std::uint8_t {
        text,
        number4,    ///< a count or a bit pattern of 4 bytes, never negative
        number8,    ///< of 8 bytes
        textNumber, ///< a decimal integer that was found as text: it answers numeric reads and text reads
    };

    Kind kind = Kind::text;
    std::string text;         ///< text and textNumber
    std::uint64_t number = 0; ///< everything but text; in two's complement where the text has a minus

    [[nodiscard]] static SysctlValue ofText(std::string text) { return {Kind::text, std::move(text), 0}; }
    [[nodiscard]] static SysctlValue of4(std::uint32_t number) { return {Kind::number4, {}, number}; }
    [[nodiscard]] static SysctlValue of8(std::uint64_t number) { return {Kind::number8, {}, number}; }
    [[nodiscard]] static SysctlValue ofTextNumber(std::string text, std::uint64_t number) {
        return {Kind::textNumber, std::move(text), number};
    }
    bool operator==(const SysctlValue&) const = default;
};

/// A key's value, or why there is none: `error` is 0, ENOENT for an unknown key, or what a read failed with.
struct SysctlAnswer {
    int error = ENOENT;
    SysctlValue value;

    SysctlAnswer() = default;
    SysctlAnswer(SysctlValue found) : error(0), value(std::move(found)) {}
    [[nodiscard]] static SysctlAnswer failed(int error) {
        SysctlAnswer answer;
        answer.error = error;
        return answer;
    }
};

/// What stands behind `sysctlbyname`: the system's own values, or made-up ones. Asked afresh for every call,
/// from any thread.
class SysctlSource {
public:
    SysctlSource() = default;
    SysctlSource(const SysctlSource&) = delete;
    SysctlSource& operator=(const SysctlSource&) = delete;
    virtual ~SysctlSource() = default;

    /// The value of a whole key such as "hw.memsize".
    [[nodiscard]] virtual SysctlAnswer read(std::string_view key) = 0;
    /// The keys at or below a name ("hw", "net.ipv4", "" for all) as far as the source can list them, in
    /// alphabetical order. Not each has a value.
    [[nodiscard]] virtual std::vector<std::string> keys(std::string_view /*name*/) { return {}; }
};

/// The source that is used where no `Current<SysctlSource>` has put another in place: the system's. It comes
/// with the library of the system that the program is linked for, so that a program needs no set-up. A scope
/// counts on the thread that made it; a thread that is to share it runs a WorkItem made under the scope.
[[nodiscard]] SysctlSource& defaultSysctlSource();

/// The one in place on this thread.
[[nodiscard]] SysctlSource& currentSysctlSource();

} // namespace vantor::platform
