// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vantor::platform::linux {

/// The RAM in bytes that a compressed memory disk takes, its own bookkeeping included: the third number of
/// /sys/block/zram*/mm_stat (Documentation/admin-guide/blockdev/zram.rst, since Linux 4.1). Absent where the
/// text holds no third number.
[[nodiscard]] std::optional<std::uint64_t> parseZramMemoryUsed(std::string_view text);

} // namespace vantor::platform::linux
