// SPDX-License-Identifier: MIT
#include "platform/linux/figures/LinkNames.hpp"

#include <algorithm>

namespace vantor::platform::linux {

std::string unnumberedName(LinkKind kind, std::string_view name) {
    if (kind == LinkKind::loopback) {
        return "lo0";
    }
    std::string result = name.starts_with("en") || name.starts_with("pdp_ip") ? "virtual-" : "";
    result += name;
    return result;
}

std::string numberedName(LinkKind kind, std::uint32_t number) {
    return (kind == LinkKind::modem ? "pdp_ip" : "en") + std::to_string(number);
}

std::uint32_t NumberPool::take() {
    const auto free = std::find(m_taken.begin(), m_taken.end(), false);
    const auto number = static_cast<std::uint32_t>(free - m_taken.begin());
    if (free == m_taken.end()) {
        m_taken.push_back(true);
    } else {
        *free = true;
    }
    return number;
}

void NumberPool::give(std::uint32_t number) {
    m_taken[number] = false;
}

} // namespace vantor::platform::linux
