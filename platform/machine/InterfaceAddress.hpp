// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

/// Network interface entries under the names of the BSD call that lists them.
namespace vantor::platform {

inline constexpr std::uint8_t AF_LINK = 18;

/// What a machine reports of one interface address. An absent name or family stands for a null pointer in the
/// list: the reader of the list treats it as broken.
struct InterfaceAddress {
    std::optional<std::string> name;
    std::optional<std::uint8_t> family;
    std::uint32_t receivedBytes = 0; ///< low 32 bits of the counter; link-level entries only
    std::uint32_t sentBytes = 0;
};

/// The statistics record of a link-level entry.
struct if_data {
    std::uint32_t ifi_ibytes;
    std::uint32_t ifi_obytes;
};

struct sockaddr {
    std::uint8_t sa_family;
};

/// One entry of the list.
struct ifaddrs {
    ifaddrs* ifa_next;
    const char* ifa_name;
    const sockaddr* ifa_addr;
    const if_data* ifa_data;
};

/// Hands out the list of the machine's interface addresses; 0 on success, -1 otherwise. Free it with
/// `freeifaddrs`, an empty list (null) too.
int getifaddrs(ifaddrs** list);
void freeifaddrs(ifaddrs* list);

} // namespace vantor::platform
