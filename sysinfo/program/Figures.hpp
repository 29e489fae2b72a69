// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// Figures as the page shows them: English, in any locale. Absent where the figure is.
namespace vantor::sysinfo {

using Text = std::optional<std::string>;
using Count = std::optional<std::uint64_t>;

/// "1 hour", "2 hours".
[[nodiscard]] std::string plural(std::uint64_t count, const char* unit);
[[nodiscard]] Text bytes(Count count);
/// "4", or "3 of 4" where some are offline.
[[nodiscard]] Text counted(Count online, Count inAll);
/// "2 x 32 KB": as many caches of that size as serve the users (threads or cores), "32 KB" for a single one,
/// "32 KB each" where their number is not known.
[[nodiscard]] Text caches(Count size, Count users, Count usersPerCache);
/// From Hz: "2.45 GHz".
[[nodiscard]] Text frequency(Count hertz);
/// The two largest units of some seconds: "3 days, 4 hours".
[[nodiscard]] Text duration(Count seconds);

} // namespace vantor::sysinfo
